#include "fuzz/panel_walk.h"

#include "host/jobs/job_text.h"
#include "host/jobs/option_encoding.h"
#include "host/script/script_alerts.h"
#include "host/script/script_user.h"
#include "host/session/program_files.h"
#include "toolkit/button.h"
#include "toolkit/number_field.h"
#include "toolkit/popup_list.h"
#include "toolkit/radio_matrix.h"
#include "toolkit/table_view.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace fuzz {
namespace {

[[noreturn]] void fail(const char* what, const std::string& text) {
    std::fprintf(stderr, "%s: \"%s\"\n", what, text.c_str());
    std::abort();
}

void checkShownText(const std::string& text) {
    if (!host::isUtf8(text) || host::hasControlCharacters(text))
        fail("a text that is shown is no plain text", text);
}

/// The controls by themselves: a use may hide others and rebuild their items, but never removes a model.
std::vector<toolkit::Control*> controlsOf(const toolkit::LoadedViews& views) {
    std::set<const toolkit::View*> inWindows; // they are used while their window is run
    for (const auto& view : views.views())
        if (const auto* window = dynamic_cast<const toolkit::Window*>(view.get()))
            inWindows.insert(window->content().begin(), window->content().end());
    std::vector<toolkit::Control*> controls;
    for (const auto& view : views.views())
        if (auto* control = dynamic_cast<toolkit::Control*>(view.get());
            control != nullptr && !inWindows.contains(control))
            controls.push_back(control);
    return controls;
}

void useControl(toolkit::Control& control, int& uses) {
    const auto usable = [&] { return uses > 0 && control.isEnabled() && !control.isHidden(); };
    if (auto* popup = dynamic_cast<toolkit::PopUpList*>(&control)) {
        for (int index = 0; usable() && index < static_cast<int>(popup->items().size()); ++index, --uses) {
            checkShownText(popup->items()[static_cast<std::size_t>(index)].title);
            if (popup->items()[static_cast<std::size_t>(index)].enabled)
                popup->userSelectedItemAtIndex(index);
        }
    } else if (auto* matrix = dynamic_cast<toolkit::RadioMatrix*>(&control)) {
        for (int row = 0; usable() && row < static_cast<int>(matrix->cells().size()); ++row, --uses)
            matrix->userSelectedRow(row);
    } else if (auto* table = dynamic_cast<toolkit::TableView*>(&control)) {
        const auto entries = [&] { return table->content() == nullptr ? 0 : table->content()->entries().size(); };
        for (int index = 0; usable() && index < static_cast<int>(entries()); ++index, --uses)
            table->userSelectedEntry(index);
    } else if (auto* box = dynamic_cast<toolkit::CheckBox*>(&control)) {
        for (const bool on : {!box->isOn(), box->isOn(), true})
            if (usable()) {
                box->userSetOn(on);
                --uses;
            }
    } else if (auto* push = dynamic_cast<toolkit::PushButton*>(&control)) {
        if (usable()) {
            push->userPressed();
            --uses;
        }
    } else if (auto* field = dynamic_cast<toolkit::NumberField*>(&control)) {
        for (const double value : {field->minimum(), field->maximum()})
            if (usable()) {
                field->userSetValue(value);
                --uses;
            }
    }
}

} // namespace

void useControls(const toolkit::LoadedViews& views, int& uses) {
    for (toolkit::Control* control : controlsOf(views))
        useControl(*control, uses);
}

std::shared_ptr<host::Session> openSession(std::string_view ppdText, toolkit::BundleView view) {
    static host::ScriptUser user;
    static host::ScriptAlerts alerts(user);
    static toolkit::MemoryUserDefaults defaults;
    defaults = {};
    (void)alerts.takeShown();
    std::string error;
    static const auto plugIn = host::PlugIn::load(host::pathOfPlugInBundle(), error);
    if (plugIn == nullptr)
        fail("the bundle cannot be used", error);
    auto description = printing::PrinterDescription::openText(ppdText, view.languages, error);
    if (description == nullptr) {
        if (error.empty())
            fail("a PPD is refused without a reason", {});
        return nullptr;
    }
    description->markDefaults();
    host::SessionOptions options;
    options.plugIn = plugIn;
    options.description = std::move(description);
    options.bundleView = std::move(view);
    options.userDefaults = &defaults;
    options.presenter = &alerts;
    auto session = host::Session::open(std::move(options), error);
    if (session == nullptr && error.empty())
        fail("a session is refused without a reason", {});
    return session;
}

void walkPanels(host::Session& session, int uses, int marks) {
    for (const auto& panel : session.panels()) {
        session.showPanel(*panel);
        int own = uses;
        if (panel->loadedViews() != nullptr)
            useControls(*panel->loadedViews(), own);
    }
    const std::vector<printing::Option> options = session.description().options();
    std::string error;
    for (const printing::Option& option : options) {
        checkShownText(option.text);
        for (const printing::Choice& choice : option.choices) {
            checkShownText(choice.text);
            if (marks-- > 0)
                session.markFromOutside(option.keyword, choice.keyword, true, error);
        }
    }
    for (const auto& panel : session.panels()) {
        (void)panel->summaryInfo();
        panel->shouldHide();
        session.showPanel(*panel);
    }
    for (const host::RefusedMark& refused : session.takeRecord().refused)
        checkShownText(refused.reason);
    session.shouldPrint();
    (void)host::refusalForOptions(session.jobOptions());
    session.closeKeyWindow();
}

} // namespace fuzz
