#pragma once

#include "framework/export.h"
#include "printing/page_format.h"
#include "printing/print_settings.h"
#include "printing/printer_description.h"
#include "toolkit/application.h"
#include "toolkit/object.h"

#include <string_view>

namespace framework {

/// The operations of the Host Callback that a host may lack, by their message names.
inline constexpr std::string_view kWillChangeOptionSelector = "willChangePPDOptionKeyValue:ppdChoice:";
inline constexpr std::string_view kPrintSettingsSelector = "printSettings"; ///< there may be none
inline constexpr std::string_view kPageFormatSelector = "pageFormat";       ///< there may be none
inline constexpr std::string_view kPanelViewDidResizeSelector = "panelViewDidResize";

/// What a print dialog gives the panels of one dialog. It is also the sender of the notifications between them, so
/// that the panels of two dialogs never hear each other. Outlives the panels.
class CV_FRAMEWORK_EXPORT HostCallback : public toolkit::Object {
public:
    ~HostCallback() override;

    /// Whether the host implements the operation of this message name. What it lacks, when called, gives nothing.
    [[nodiscard]] virtual bool respondsToSelector(std::string_view operation) const = 0;
    /// The opened PPD of the printer, the host's own, valid as long as a panel lives. Null counts as one without
    /// options.
    [[nodiscard]] virtual const printing::PrinterDescription* ppdFile() = 0;
    /// The job's print settings; null where the host has none.
    [[nodiscard]] virtual printing::PrintSettings* printSettings() = 0;
    /// The job's page format; null where the host has none.
    [[nodiscard]] virtual const printing::PageFormat* pageFormat() = 0;
    /// Asks the host to mark the choice. True: it is marked. False: refused, and nothing changed.
    virtual bool willChangePPDOptionKeyValuePpdChoice(std::string_view option, std::string_view choice) = 0;
    /// The panel's view changed its size: the dialog is laid out anew.
    virtual void panelViewDidResize() = 0;

    /// The windowing system's services for this dialog.
    [[nodiscard]] virtual toolkit::Application& application() = 0;
};

} // namespace framework
