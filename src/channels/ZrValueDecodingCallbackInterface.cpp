#include "channels/ZrValueDecodingCallbackInterface.h"

#include "channels/ChannelErrorCodes.h"
#include "channels/IChannelgroupDecoder.h"
#include "core/CoreErrorCodes.h"
#include "core/ZrErrorHandler.h"

namespace quillon {

ErrorCode ZrValueDecodingCallbackInterface1D::AttachToDecoder(const std::string& name, std::int32_t group,
                                                              std::uint32_t channel, IChannelgroupDecoder* decoder) {
  if (!decoder) return RaiseRootError(ZRVALUEDECODINGCALLBACKINTERFACE1D_ATTACHTODECODER);
  if (decoder->Register1D(name, group, channel, this) != HALCYON_SUCCESS)
    return RaiseError(ZRVALUEDECODINGCALLBACKINTERFACE1D_ATTACHTODECODER);
  return HALCYON_SUCCESS;
}

ErrorCode ZrValueDecodingCallbackInterface3D::AttachToDecoder(const std::string& name, std::int32_t group,
                                                              std::uint32_t channel, IChannelgroupDecoder* decoder) {
  if (!decoder) return RaiseRootError(ZRVALUEDECODINGCALLBACKINTERFACE3D_ATTACHTODECODER);
  if (decoder->Register3D(name, group, channel, this) != HALCYON_SUCCESS)
    return RaiseError(ZRVALUEDECODINGCALLBACKINTERFACE3D_ATTACHTODECODER);
  return HALCYON_SUCCESS;
}

ErrorCode ZrValueDecodingCallbackInterface6D::AttachToDecoder(const std::string& name, std::int32_t group,
                                                              std::uint32_t channel, IChannelgroupDecoder* decoder) {
  if (!decoder) return RaiseRootError(ZRVALUEDECODINGCALLBACKINTERFACE6D_ATTACHTODECODER);
  if (decoder->Register6D(name, group, channel, this) != HALCYON_SUCCESS)
    return RaiseError(ZRVALUEDECODINGCALLBACKINTERFACE6D_ATTACHTODECODER);
  return HALCYON_SUCCESS;
}

ErrorCode ZrValueDecodingCallbackInterfaceTime::AttachToDecoder(const std::string& name, std::int32_t group,
                                                                std::uint32_t channel, IChannelgroupDecoder* decoder) {
  if (!decoder) return RaiseRootError(ZRVALUEDECODINGCALLBACKINTERFACETIME_ATTACHTODECODER);
  if (decoder->RegisterTime(name, group, channel, this) != HALCYON_SUCCESS)
    return RaiseError(ZRVALUEDECODINGCALLBACKINTERFACETIME_ATTACHTODECODER);
  return HALCYON_SUCCESS;
}

}  // namespace quillon
