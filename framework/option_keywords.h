#pragma once

#include <string_view>

/// PPD options and choices that more than one panel or the base panel knows by name, and the notifications and keys
/// that they share.
namespace keywords {

inline constexpr std::string_view kMediaType = "CVMediaType";             ///< the medium
inline constexpr std::string_view kMonoColor = "CVMonoColor";             ///< colour or grayscale
inline constexpr std::string_view kSlowDrying = "CVSlowDrying";           ///< Boolean
inline constexpr std::string_view kMirrorPrint = "MirrorPrint";           ///< Boolean, with words of its own
inline constexpr std::string_view kHalfTonePattern = "CVHalfTonePattern"; ///< follows the medium
inline constexpr std::string_view kOutput = "CVOutput";   ///< also the key of effectContent that fax output clears
inline constexpr std::string_view kDuplex = "Duplex";     ///< two-sided printing
inline constexpr std::string_view kPageSize = "PageSize"; ///< the paper
inline constexpr std::string_view kVertLineAlignA3 = "CVVertLineAlignA3B4Ledger";       ///< Boolean
inline constexpr std::string_view kVertLineAlignA4 = "CVVertLineAlignA4Letter";         ///< Boolean
inline constexpr std::string_view kVertLineAlignOther = "CVVertLineAlignOther";         ///< Boolean
inline constexpr std::string_view kVertLineAlignDedicated = "CVVertLineAlignDedicated"; ///< Boolean

inline constexpr std::string_view kOn = "ON", kOff = "OFF";         ///< of Boolean options
inline constexpr std::string_view kTrue = "True", kFalse = "False"; ///< of "MirrorPrint"
inline constexpr std::string_view kFax = "FAX";                     ///< of kOutput
inline constexpr std::string_view kPlain = "Plain", kPlainDuplex = "PlainDuplex", kGlossy = "Glossy",
                                  kHagakiUra = "HagakiUra";
inline constexpr std::string_view kColor = "Color", kMono = "Mono";             ///< of kMonoColor
inline constexpr std::string_view kDither = "Dither", kDiffusion = "Diffusion"; ///< of kHalfTonePattern

/// Posted between the two panels of one dialog, with the Host Callback as the sender.
inline constexpr std::string_view kInkPrintSettingNotification = "CVInkPrintSettingNotification";
inline constexpr std::string_view kFromSetting = "FromSetting"; ///< the entry that names the setting that is told

/// The entry of a Summary Dictionary with the order of the others.
inline constexpr std::string_view kSummaryDisplayOrder = "Summary Display Order";

/// The job's print settings: this, a full stop, and a private key.
inline constexpr std::string_view kPrintSettingsPrefix = "com.corvane.print.PrintSettings";

/// The toolkit's notifications.
inline constexpr std::string_view kWindowWillClose = "NSWindowWillCloseNotification";
inline constexpr std::string_view kViewDidUpdateTrackingAreas = "NSViewDidUpdateTrackingAreasNotification";
inline constexpr std::string_view kMenuDidSendAction = "NSMenuDidSendActionNotification"; ///< sent by a menu

} // namespace keywords
