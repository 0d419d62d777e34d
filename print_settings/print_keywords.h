#pragma once

#include "framework/option_keywords.h"

#include <string_view>

/// PPD options, choices and paper names that only the rules of the Print Settings panel know.
namespace keywords {

inline constexpr std::string_view kResolution = "CVResolution";
inline constexpr std::string_view kPaperThick = "CVColorPaperThick";
inline constexpr std::string_view kInputSlot = "CVInputSlot";
inline constexpr std::string_view kBiDir = "CVBiDir";
inline constexpr std::string_view kMirror = "CVMirror";
inline constexpr std::string_view kReverse = "CVReverse";
inline constexpr std::string_view kJpeg = "CVJpeg";
inline constexpr std::string_view kDuplexMode = "CVDuplexMode";

inline constexpr std::string_view kInkjet = "Inkjet", kQT20Matte = "CorvaneQT20Matte", kCorvaneGlossy = "CorvaneGlossy",
                                  kCorvaneGlossyR = "CorvaneGlossyR", kTransparencies = "Transparencies",
                                  kHagakiAtena = "HagakiAtena", kPrintableDisc = "PrintableDisc",
                                  kGlossyPrintableDisc = "GlossyPrintableDisc";
inline constexpr std::string_view kPlainFast = "PlainFast", kPlainNormal = "PlainNormal", kHigh = "High",
                                  kBest = "Best", kFast = "Fast", kNormal = "Normal", kPhoto = "Photo",
                                  kDiscNormal = "DiscNormal", kDiscSlow = "DiscSlow";
inline constexpr std::string_view kRegular = "Regular", kEnvelopeThickness = "Env";
inline constexpr std::string_view kTray1 = "Tray1";

inline constexpr std::string_view kUnsupportedPaper = "UnsupportedPaper"; // what a "Letter" out of limits becomes
inline constexpr std::string_view kCustomPaperPrefix = "Custom", kEnvelopePaperPrefix = "Env";

inline constexpr std::string_view kJapanese = "ja";

} // namespace keywords
