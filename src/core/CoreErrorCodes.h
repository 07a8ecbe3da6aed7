#pragma once
// Codes of the error list itself and of the object base.

#include <array>

#include "core/ErrorDefinition.h"

namespace quillon {

inline constexpr ErrorCode HALCYON_SUCCESS = 0;
inline constexpr ErrorCode HALCYON_NOT_IMPLEMENTED = 1;
inline constexpr ErrorCode ERRORTREE_MAX_REACHED = 2;
inline constexpr ErrorCode ROOTERROR_MAX_REACHED = 4;
inline constexpr ErrorCode ZRANYOBJECT_ILLEGAL_CLASS_ID = 1000;
inline constexpr ErrorCode ZRANYOBJECT_ERROR_NOTIFY = 1001;

inline constexpr std::array kCoreErrors{
    ErrorDefinition{HALCYON_SUCCESS, "No Error (HALCYON_SUCCESS)", true},
    ErrorDefinition{HALCYON_NOT_IMPLEMENTED, "Not (yet) Implemented (HALCYON_NOT_IMPLEMENTED)", true},
    ErrorDefinition{ERRORTREE_MAX_REACHED,
                    "ZrErrorHandler::SetError() Error \n\t Maximum Number of error messages exceeded. "
                    "(ERRORTREE_MAX_REACHED)"},
    ErrorDefinition{ROOTERROR_MAX_REACHED,
                    "ZrErrorMap::GetFirstRootEntry() or ZrErrorMap::GetNextRootEntry() Error \n\t "
                    "(Deprecated.) (ROOTERROR_MAX_REACHED)"},
    ErrorDefinition{ZRANYOBJECT_ILLEGAL_CLASS_ID,
                    "ZrAnyObject::IsKindOf() Error \n\t Illegal class ID: there is no class with this "
                    "ID. (ZRANYOBJECT_ILLEGAL_CLASS_ID)",
                    true},
    ErrorDefinition{ZRANYOBJECT_ERROR_NOTIFY, "ZrAnyObject::Notify() Error \n\t (ZRANYOBJECT_ERROR_NOTIFY)"},
};

}  // namespace quillon
