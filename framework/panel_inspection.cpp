#include "framework/panel_inspection.h"

#include <array>

namespace framework {
namespace {

toolkit::Value valueOrNone(const std::optional<std::string>& text) {
    return text ? toolkit::Value(*text) : toolkit::Value();
}

// The factory with the callback of the dialog that it is asked for.
struct FactoryReceiver {
    CVInkQuality12PDEPlugIn& factory;
    HostCallback* callback;

    bool initWithBundle(const std::optional<std::string>&) {
        return factory.initWithBundle(callback == nullptr ? nullptr : callback->application().pluginBundle());
    }
    PanelList panelsForType(const std::optional<std::string>& type, const std::optional<std::string>&) {
        return factory.PDEPanelsForTypeWithHostInfo(type.value_or(""), callback);
    }
};

constexpr Message<FactoryReceiver> kFactoryMessages[] = {
    message<FactoryReceiver, &FactoryReceiver::initWithBundle>("initWithBundle:"),
    message<FactoryReceiver, &FactoryReceiver::panelsForType>("PDEPanelsForType:withHostInfo:"),
};

} // namespace

toolkit::ValueMap PanelInspection::fieldsOfPanel(const CVPrintQualityPDE& panel) const {
    toolkit::ValueMap fields = panel.ownFields();
    fields["thePDEName"] = valueOrNone(panel.thePDEName_);
    toolkit::Value keys;
    if (panel.PPDKeys)
        keys = toolkit::ValueList(panel.PPDKeys->begin(), panel.PPDKeys->end());
    fields["PPDKeys"] = std::move(keys);
    fields["outputBin"] = panel.outputBin_;
    fields["imageModeFlag"] = std::int64_t{panel.imageModeFlag_};
    fields["paperName"] = valueOrNone(panel.paperName);
    fields["popupInited"] = panel.popupInited;
    fields["effectContent"] = panel.effectContent == nullptr ? toolkit::Value() : panel.effectContent->entries();
    return fields;
}

bool PanelInspection::setFieldOfPanel(CVPrintQualityPDE& panel, std::string_view field, const std::string& key,
                                      const toolkit::Value& value, std::string& error) const {
    if (field == "imageModeFlag") {
        const auto* word = value.as<std::int64_t>();
        if (word == nullptr || *word < 0 || *word > UINT32_MAX) {
            error = "\"imageModeFlag\" is a whole number of 32 bits.";
            return false;
        }
        panel.imageModeFlag_ = static_cast<std::uint32_t>(*word);
    } else if (field == "paperName") {
        const auto* name = value.as<std::string>();
        if (name == nullptr && !value.isAbsent()) {
            error = "\"paperName\" is a text or null.";
            return false;
        }
        panel.paperName = name == nullptr ? std::nullopt : std::optional(*name);
    } else if (field == "outputBin") {
        if (!value.isAbsent() && !value.as<std::string>() && !value.as<std::int64_t>() && !value.as<double>()) {
            error = "\"outputBin\" holds texts and numbers.";
            return false;
        }
        if (value.isAbsent())
            panel.outputBin_.erase(key);
        else
            panel.outputBin_.insert_or_assign(key, value);
    } else if (field == "effectContent") {
        if (panel.effectContent == nullptr) {
            error = "There is no \"effectContent\" before the panel's view is made.";
            return false;
        }
        panel.effectContent->setValueForKey(value, key);
    } else {
        error = "There is no field \"" + std::string(field) + "\" that can be set.";
        return false;
    }
    return true;
}

std::optional<PreviewState> PanelInspection::previewOfPanel(const CVPrintQualityPDE& panel) const {
    return panel.preview();
}

MessageResult PanelInspection::sendToFactory(CVInkQuality12PDEPlugIn& factory, HostCallback* callback,
                                             std::string_view name, std::span<const MessageValue> arguments) const {
    FactoryReceiver receiver{factory, callback};
    const std::array<std::span<const Message<FactoryReceiver>>, 1> tables = {kFactoryMessages};
    return sendMessage<FactoryReceiver>(receiver, tables, name, arguments);
}

MessageResult PanelInspection::sendToText(const TextReceiver& receiver, std::string_view name,
                                          std::span<const MessageValue> arguments) const {
    const std::array<std::span<const TextMessage>, 1> tables = {textMessages_};
    return sendMessage<const TextReceiver>(receiver, tables, name, arguments);
}

std::vector<std::string_view> PanelInspection::messagesOfPanel(const CVPrintQualityPDE& panel) const {
    std::vector<std::string_view> names;
    for (const auto& table : panel.messageTables())
        for (const auto& row : table)
            names.push_back(row.name);
    return names;
}

std::vector<std::string_view> PanelInspection::outletsOfPanel(const CVPrintQualityPDE& panel) const {
    std::vector<std::string_view> names;
    for (const auto& table : panel.outletTables())
        for (const auto& row : table)
            names.push_back(row.name);
    return names;
}

bool PanelInspection::connectOutlet(CVPrintQualityPDE& panel, std::string_view name, toolkit::View& view) const {
    for (const auto& table : panel.outletTables())
        for (const auto& row : table)
            if (row.name == name)
                return row.connect(panel, view);
    return false;
}

} // namespace framework
