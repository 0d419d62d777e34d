#pragma once

#include <cstdint>

/// The bits of a panel's imageModeFlag. Bit 0x100 and those from 0x20000 on are not used.
enum ImageModeFlag : std::uint32_t {
    kImageModeVendorColorMatching = 0x1, ///< the driver's colour matching is in effect
    kImageModeMonochrome = 0x2,          ///< the job prints in monochrome
    kImageModeDuplex = 0x4,              ///< two-sided printing is on, on a printer with a medium for it
    kImageModeSlowDryingDisabled = 0x8,  ///< slow drying cannot be chosen
    kImageModeTransparency = 0x10,       ///< the medium is transparencies
    kImageModeBorderless = 0x20,         ///< the paper is a borderless size
    kImageModeEnvelope = 0x40,           ///< the paper is an envelope
    kImageModeBiDirDisabled = 0x80,      ///< bi-directional printing cannot be chosen: envelope or postcard
    kImageModeFaxOutput = 0x200,         ///< the job goes to fax
    kImageModeLaterModel = 0x400,        ///< a later model of the printer family; read by nothing, only told
    kImageModeHelpRegistered = 0x800,    ///< the panel's help book is known to the help viewer
    kImageModeJpegUnavailable = 0x1000,  ///< JPEG printing cannot be chosen; set by nothing
    kImageModePanelShown = 0x2000,       ///< the panel is at the front
    kImageModePrintableDisc = 0x4000,    ///< the job prints on a disc; set by nothing
    kImageModeDiffusion = 0x10000,       ///< the half-tone pattern is diffusion
};
