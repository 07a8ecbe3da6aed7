#pragma once
// Codes of the channel archive, the channel values and the channel-group decoder.

#include <array>

#include "core/ErrorDefinition.h"

namespace quillon {

// Channel-group decoder and its receivers.
inline constexpr ErrorCode QUILLONCHANNELGROUPDECODER_DECODECHANNELGROUP_TYPEMISMATCH = 1290100;
inline constexpr ErrorCode QUILLONCHANNELGROUPDECODER_REGISTER = 1290101;
inline constexpr ErrorCode QUILLONCHANNELGROUPDECODER_REGISTER1D_CHANNELALREADYREGISTERED = 1290102;
inline constexpr ErrorCode QUILLONCHANNELGROUPDECODER_REGISTER3D_CHANNELALREADYREGISTERED = 1290103;
inline constexpr ErrorCode QUILLONCHANNELGROUPDECODER_REGISTER6D_CHANNELALREADYREGISTERED = 1290104;
inline constexpr ErrorCode QUILLONCHANNELGROUPDECODER_REGISTERTIME_CHANNELALREADYREGISTERED = 1290105;
inline constexpr ErrorCode QUILLONCHANNELGROUPDECODER_DECODECHANNELGROUP_TRUNCATED = 1290106;
inline constexpr ErrorCode QUILLONCHANNELGROUPENCODER_ENCODECHANNELGROUP_ZRVALUESISNULL = 1290200;
inline constexpr ErrorCode QUILLONCHANNELGROUPENCODER_ENCODECHANNELGROUP_ZRVALUEISNULL = 1290201;
inline constexpr ErrorCode ZRVALUEDECODINGCALLBACKINTERFACE1D_ATTACHTODECODER = 1290400;
inline constexpr ErrorCode ZRVALUEDECODINGCALLBACKINTERFACE3D_ATTACHTODECODER = 1290500;
inline constexpr ErrorCode ZRVALUEDECODINGCALLBACKINTERFACE6D_ATTACHTODECODER = 1290600;
inline constexpr ErrorCode ZRVALUEDECODINGCALLBACKINTERFACETIME_ATTACHTODECODER = 1290700;

inline constexpr std::array kChannelErrors{
    ErrorDefinition{QUILLONCHANNELGROUPDECODER_DECODECHANNELGROUP_TYPEMISMATCH,
                    "QuillonChannelgroupDecoder::DecodeChannelgroup() Error  \n\t The specified channel type in "
                    "the extern route description of the xml file is not compatible with the type of ZrValues "
                    "you are actually sending over that channel. "
                    "(QUILLONCHANNELGROUPDECODER_DECODECHANNELGROUP_TYPEMISMATCH)"},
    ErrorDefinition{QUILLONCHANNELGROUPDECODER_REGISTER,
                    "QuillonChannelgroupDecoder::Register(std::string controlPathName, int groupNumber, "
                    "unsigned int channelNumber, ZrValueDecodingCallbackInterface* decodingCallback) Error \n\t "
                    "(QUILLONCHANNELGROUPDECODER_REGISTER)"},
    ErrorDefinition{QUILLONCHANNELGROUPDECODER_REGISTER1D_CHANNELALREADYREGISTERED,
                    "QuillonChannelgroupDecoder::Register1D() Error \n\t You can not register an external 1D "
                    "route to this scene node because the node is already in use by another external route. "
                    "(QUILLONCHANNELGROUPDECODER_REGISTER1D_CHANNELALREADYREGISTERED)"},
    ErrorDefinition{QUILLONCHANNELGROUPDECODER_REGISTER3D_CHANNELALREADYREGISTERED,
                    "QuillonChannelgroupDecoder::Register3D() Error \n\t You can not register an external 3D "
                    "route to this scene node because the node is already in use by another external route. "
                    "(QUILLONCHANNELGROUPDECODER_REGISTER3D_CHANNELALREADYREGISTERED)"},
    ErrorDefinition{QUILLONCHANNELGROUPDECODER_REGISTER6D_CHANNELALREADYREGISTERED,
                    "QuillonChannelgroupDecoder::Register6D() Error \n\t You can not register an external 6D "
                    "route to this scene node because the node is already in use by another external route. "
                    "(QUILLONCHANNELGROUPDECODER_REGISTER6D_CHANNELALREADYREGISTERED)"},
    ErrorDefinition{QUILLONCHANNELGROUPDECODER_REGISTERTIME_CHANNELALREADYREGISTERED,
                    "QuillonChannelgroupDecoder::RegisterTime() Error \n\t You can not register an external Time "
                    "route to this scene node because the node is already in use by another external route. "
                    "(QUILLONCHANNELGROUPDECODER_REGISTERTIME_CHANNELALREADYREGISTERED)"},
    ErrorDefinition{QUILLONCHANNELGROUPDECODER_DECODECHANNELGROUP_TRUNCATED,
                    "QuillonChannelgroupDecoder::DecodeChannelgroup() Error  \n\t The message is shorter than its "
                    "header and records claim. (QUILLONCHANNELGROUPDECODER_DECODECHANNELGROUP_TRUNCATED)"},
    ErrorDefinition{QUILLONCHANNELGROUPENCODER_ENCODECHANNELGROUP_ZRVALUESISNULL,
                    "QuillonChannelgroupEncoder::EncodeChannelgroup() Error \n\t The vectorpointer to the zrvalues "
                    "is NULL. Send an empty vector if you want nothing to encode. "
                    "(QUILLONCHANNELGROUPENCODER_ENCODECHANNELGROUP_ZRVALUESISNULL)"},
    ErrorDefinition{QUILLONCHANNELGROUPENCODER_ENCODECHANNELGROUP_ZRVALUEISNULL,
                    "QuillonChannelgroupEncoder::EncodeChannelgroup() Error \n\t A pointer to a ZrValue is NULL. "
                    "Unable to encode this. (QUILLONCHANNELGROUPENCODER_ENCODECHANNELGROUP_ZRVALUEISNULL)"},
    ErrorDefinition{ZRVALUEDECODINGCALLBACKINTERFACE1D_ATTACHTODECODER,
                    "ZrValueDecodingCallbackInterface1D::AttachToDecoder() Error  \n\t "
                    "(ZRVALUEDECODINGCALLBACKINTERFACE1D_ATTACHTODECODER)"},
    ErrorDefinition{ZRVALUEDECODINGCALLBACKINTERFACE3D_ATTACHTODECODER,
                    "ZrValueDecodingCallbackInterface3D::AttachToDecoder(std::string controlPathName, int "
                    "groupNumber, unsigned int channelNumber, QuillonChannelgroupDecoder* decoder) Error  \n\t "
                    "(ZRVALUEDECODINGCALLBACKINTERFACE3D_ATTACHTODECODER)"},
    ErrorDefinition{ZRVALUEDECODINGCALLBACKINTERFACE6D_ATTACHTODECODER,
                    "ZrValueDecodingCallbackInterface6D::AttachToDecoder(std::string controlPathName, int "
                    "groupNumber, unsigned int channelNumber, QuillonChannelgroupDecoder* decoder) Error  \n\t "
                    "(ZRVALUEDECODINGCALLBACKINTERFACE6D_ATTACHTODECODER)"},
    ErrorDefinition{ZRVALUEDECODINGCALLBACKINTERFACETIME_ATTACHTODECODER,
                    "ZrValueDecodingCallbackInterfaceTime::AttachToDecoder(std::string controlPathName, int "
                    "groupNumber, unsigned int channelNumber, QuillonChannelgroupDecoder* decoder) Error  \n\t "
                    "(ZRVALUEDECODINGCALLBACKINTERFACETIME_ATTACHTODECODER)"},
};

}  // namespace quillon
