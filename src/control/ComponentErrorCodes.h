#pragma once
// Codes of the viewer component and of the control around it.

#include <array>

#include "core/ErrorDefinition.h"

namespace quillon {

inline constexpr ErrorCode QUILLONCOMPONENT_REGISTERINDECODER = 1290301;
inline constexpr ErrorCode QUILLONCOMPONENT_CONVERTERRORTREEFORCOM = 1290302;
inline constexpr ErrorCode QUILLONCOMPONENT_INITIALIZEVIEWER = 1290303;
/// Our own: a host passed a byte count that is negative or above the control's limit.
inline constexpr ErrorCode CQUILLONCTRL_SENDCHANNELS_BADCOUNT = 1290304;

inline constexpr std::array kComponentErrors{
    ErrorDefinition{QUILLONCOMPONENT_REGISTERINDECODER,
                    "QuillonComponent::RegisterInDecoder() Error  \n\t (QUILLONCOMPONENT_REGISTERINDECODER)"},
    ErrorDefinition{QUILLONCOMPONENT_CONVERTERRORTREEFORCOM,
                    "QuillonComponent::ConvertErrorTreeForCOM() Error  \n\t "
                    "(QUILLONCOMPONENT_CONVERTERRORTREEFORCOM)"},
    ErrorDefinition{QUILLONCOMPONENT_INITIALIZEVIEWER,
                    "QuillonComponent::InitializeViewer() Error  \n\t (QUILLONCOMPONENT_INITIALIZEVIEWER)"},
    ErrorDefinition{CQUILLONCTRL_SENDCHANNELS_BADCOUNT,
                    "CQuillonCtrl::SendChannels_v1() Error  \n\t The byte count is negative or larger than "
                    "the limit of 64 MiB. (CQUILLONCTRL_SENDCHANNELS_BADCOUNT)"},
};

}  // namespace quillon
