#include "framework/CVInkQuality12PDEPlugIn.h"

CVInkQuality12PDEPlugIn::CVInkQuality12PDEPlugIn(std::vector<PanelMaker> makers) : makers_(std::move(makers)) {}

bool CVInkQuality12PDEPlugIn::initWithBundle(const std::shared_ptr<toolkit::Bundle>&) {
    return true;
}

framework::PanelList CVInkQuality12PDEPlugIn::PDEPanelsForTypeWithHostInfo(std::string_view type,
                                                                           framework::HostCallback* callback) {
    framework::PanelList panels;
    if (type != kPrintDialogPanelType)
        return panels;
    for (const PanelMaker maker : makers_)
        if (auto panel = maker(callback))
            panels.push_back(std::move(panel));
    return panels;
}
