#pragma once

#include "host/session/session.h"

#include "toolkit/button.h"
#include "toolkit/label.h"
#include "toolkit/number_field.h"
#include "toolkit/popup_list.h"
#include "toolkit/radio_matrix.h"

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace reliability {

/// Everything of a dialog that a rule reads or writes, as words. Two equal snapshots behave alike from then on.
using Snapshot = std::vector<std::uint32_t>;

enum Which : std::size_t { kPrint = 0, kColor = 1 };
inline constexpr std::array kPanels = {kPrint, kColor};

/// A dialog of both panels on the full sample printer, with both panels filled, that can be put into any state that it
/// was seen in. Alerts are answered with their first button, no request is refused but by the printer's constraints and
/// as refuseAt() says.
class WalkedDialog final : public host::AlertPresenter {
public:
    explicit WalkedDialog(std::vector<std::string> languages);

    [[nodiscard]] Snapshot capture() const;
    /// Puts the dialog into a captured state; another dialog of the same languages may have been in it. Nothing is
    /// asked or told.
    void establish(const Snapshot& snapshot);

    // What a user and a host do. A user's action answers false, and nothing happens, where the control does not let it.
    bool choose(Which panel, std::string_view control, std::string_view keyword);
    bool toggle(Which panel, std::string_view control);
    bool enter(std::string_view field, double value);
    bool press(Which panel, std::string_view button);
    void setPaper(std::size_t index);
    void markFromOutside(const std::string& option, const std::string& choice);
    /// What a dialog does after fax output or colour matching was changed.
    void setOutput(const std::string& choice);
    void setColorMatchingMode(const std::string& mode);
    void bringToFront(Which panel);
    /// Saves both panels.
    void saveAll();
    /// Saves, restores and summarises both panels.
    void round();

    /// The request of this number (0 is the next) is refused; nullopt: none is.
    void refuseAt(std::optional<int> number);
    /// How many requests were made since refuseAt() was told, and what went wrong with them.
    [[nodiscard]] int asked() const { return asked_; }
    [[nodiscard]] const std::vector<std::string>& faults();
    /// Whether a request was refused since then.
    [[nodiscard]] bool wasRefused() const { return wasRefused_; }
    /// Whether request 0 was to be refused, asked for another choice than the marked one, and this choice is marked
    /// now.
    [[nodiscard]] bool firstRefusedIsMarked() const {
        return firstRefused_ && marked(firstRefused_->option) == firstRefused_->choice;
    }

    // A look at it.
    [[nodiscard]] std::string marked(std::string_view option) const;
    [[nodiscard]] std::string pending(Which panel, std::string_view key) const;
    [[nodiscard]] bool stored(std::string_view key) const; ///< a Boolean of the Color Settings panel's effectContent
    [[nodiscard]] std::int64_t storedNumber(std::string_view key) const; ///< an adjustment there
    [[nodiscard]] std::vector<std::int64_t> adjustments() const;         ///< all five there
    [[nodiscard]] std::uint32_t flags(Which panel) const { return panels()[panel]->imageModeFlag(); }
    [[nodiscard]] const std::vector<std::string>& keys(Which panel) const { return sides_[panel].keys; }
    [[nodiscard]] std::string paperName() const;
    [[nodiscard]] bool isJapanese() const { return isJapanese_; }
    [[nodiscard]] std::optional<std::string> setting(std::string_view key) const;
    template <typename Kind>
    [[nodiscard]] Kind& view(Which panel, std::string_view name) const {
        auto* found = dynamic_cast<Kind*>(panels()[panel]->loadedViews()->viewNamed(name));
        if (found == nullptr)
            throw std::runtime_error("There is no such view: " + std::string(name));
        return *found;
    }
    [[nodiscard]] const std::vector<toolkit::Control*>& controls(Which panel) const { return sides_[panel].controls; }

    /// Papers that a job may be given: a name for each kind that a rule tells apart, and a free size.
    static const std::vector<printing::Paper>& papers();

    // host::AlertPresenter
    toolkit::AlertAnswer presentAlert(const toolkit::Alert& alert, bool asSheet) override;
    void presentPanel(const toolkit::AlertPanel& panel) override;
    void presentWindow(toolkit::Window& window) override;
    void openHelp(std::string_view anchor, std::string_view book) override;

private:
    struct Request {
        std::string option, choice;
    };

    struct Side {
        std::vector<std::string> keys;   // managed options
        std::vector<std::string> stored; // keys of effectContent
        std::vector<toolkit::Control*> controls;
        std::vector<toolkit::Label*> labels;
    };

    [[nodiscard]] const framework::PanelList& panels() const { return session_->panels(); }
    std::optional<std::string> filter(const std::string& option, const std::string& choice);
    void restoreAll();
    void showAll();
    void compareMarksWithThoseAtTheRefusal();
    [[nodiscard]] std::vector<std::string> allMarks() const;
    void capturePanel(Which panel, Snapshot& words) const;
    void establishPanel(Which panel, const std::uint32_t*& word);

    toolkit::MemoryUserDefaults defaults_;
    printing::PrinterDescription* description_ = nullptr; // the session's own
    std::shared_ptr<host::Session> session_;
    std::array<Side, 2> sides_;
    std::vector<std::string> options_; // whose marks belong to the state
    bool isJapanese_;
    std::size_t paper_ = 0;
    int asked_ = 0;
    bool wasRefused_ = false;
    std::optional<int> refuseAt_;
    std::optional<Request> firstRefused_;
    std::optional<std::vector<std::string>> marksAtRefusal_;
    std::vector<std::string> faults_;
};

} // namespace reliability
