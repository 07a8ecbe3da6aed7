#pragma once
// Codes of the channel archive, the channel values and the channel-group decoder.

#include <array>

#include "core/ErrorDefinition.h"

namespace quillon {

// Matrix archive.
inline constexpr ErrorCode ZRARCHIVEM_WRITEARRAY = 1000100;
inline constexpr ErrorCode ZRARCHIVEM_WRITEMATRIX_INVALID_SIZE = 1000101;
inline constexpr ErrorCode ZRARCHIVEM_OPEN = 1000102;
inline constexpr ErrorCode ZRARCHIVEM_CLOSE = 1000103;
inline constexpr ErrorCode ZRARCHIVEM_GETVALUESTRING = 1000104;
inline constexpr ErrorCode ZRARCHIVEM_GETVALUESTRING_SYNTAXERROR = 1000106;
inline constexpr ErrorCode ZRARCHIVEM_GETVALUESTRING_OBJECTNOTFOUND = 1000107;
inline constexpr ErrorCode ZRARCHIVEM_READOBJECT = 1000108;
inline constexpr ErrorCode ZRARCHIVEM_READOBJECT_TYPEMISMATCH = 1000109;
inline constexpr ErrorCode ZRARCHIVEM_READOBJECT_SYNTAXERROR = 1000110;
inline constexpr ErrorCode ZRARCHIVEM_GETVALUE_SYNTAXERROR = 1000111;
inline constexpr ErrorCode ZRARCHIVEM_GETVALUE_NOMATRIX = 1000112;
inline constexpr ErrorCode ZRARCHIVEM_READARRAY = 1000113;
inline constexpr ErrorCode ZRARCHIVEM_READARRAY_TYPEMISMATCH = 1000114;
inline constexpr ErrorCode ZRARCHIVEM_READARRAY_INVALIDSIZE = 1000115;
inline constexpr ErrorCode ZRARCHIVEM_READARRAY_SYNTAXERROR = 1000116;
inline constexpr ErrorCode ZRARCHIVEM_READMATRIX = 1000117;
inline constexpr ErrorCode ZRARCHIVEM_READMATRIX_TYPEMISMATCH = 1000118;
inline constexpr ErrorCode ZRARCHIVEM_READMATRIX_INVALIDSIZE = 1000119;
inline constexpr ErrorCode ZRARCHIVEM_READMATRIX_NOMATRIX = 1000120;
inline constexpr ErrorCode ZRARCHIVEM_READMATRIX_INVALIDNUMCOLUMNS = 1000121;
inline constexpr ErrorCode ZRARCHIVEM_WRITEOBJECT_ALREADYWRITTEN = 1000122;
inline constexpr ErrorCode ZRARCHIVEM_WRITEARRAY_ALREADYWRITTEN = 1000123;
inline constexpr ErrorCode ZRARCHIVEM_WRITEMATRIX_ALREADYWRITTEN = 1000124;
inline constexpr ErrorCode ZRARCHIVEM_WRITEOBJECT_NOOUTPUTSTREAM = 1000125;
inline constexpr ErrorCode ZRARCHIVEM_READOBJECT_NOINPUTSTREAM = 1000126;
inline constexpr ErrorCode ZRARCHIVEM_READFIRSTFLTMATRIX_NOINPUTSTREAM = 1000127;
inline constexpr ErrorCode ZRARCHIVEM_READVALUESTRING_ENDOFFILE = 1000128;
inline constexpr ErrorCode ZRARCHIVEM_READNEXTFLTMATRIX_TYPEMISMATCH = 1000129;
inline constexpr ErrorCode ZRARCHIVEM_READNEXTFLTMATRIX_SYNTAXERROR = 1000130;
inline constexpr ErrorCode ZRARCHIVEM_READFIRSTFLTMATRIX = 1000131;
inline constexpr ErrorCode ZRARCHIVEM_READNEXTFLTMATRIX_EOF = 1000132;
inline constexpr ErrorCode ZRARCHIVEM_WRITEOBJECT_STRINGARRAY_EMPTY = 1000133;

// Channel values.
inline constexpr ErrorCode ZRCOREVALUE1D_READFROM = 107600;
inline constexpr ErrorCode ZRCOREVALUE1D_WRITEON = 107601;
inline constexpr ErrorCode ZRCOREVALUE3D_READFROM = 107700;
inline constexpr ErrorCode ZRCOREVALUE3D_READFROM_BADDIMENSION = 107701;
inline constexpr ErrorCode ZRCOREVALUE3D_WRITEON = 107702;
inline constexpr ErrorCode ZRCOREVALUE6D_READFROM = 107800;
inline constexpr ErrorCode ZRCOREVALUE6D_READFROM_BADDIMENSION = 107801;
inline constexpr ErrorCode ZRCOREVALUE6D_READFROM_NOTFRAME = 107802;
inline constexpr ErrorCode ZRCOREVALUE6D_WRITEON = 107803;

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
    ErrorDefinition{ZRARCHIVEM_WRITEARRAY, "ZrArchiveM::WriteArray() Error  \n\t (ZRARCHIVEM_WRITEARRAY)"},
    ErrorDefinition{ZRARCHIVEM_WRITEMATRIX_INVALID_SIZE,
                    "ZrArchiveM::WriteMatrix(size,columns) Error  \n\t size%columns != 0 \n\t "
                    "(ZRARCHIVEM_WRITEMATRIX_INVALID_SIZE)"},
    ErrorDefinition{ZRARCHIVEM_OPEN,
                    "ZrArchiveM::Open() Error  \n\t Could not open file for reading \n\t (ZRARCHIVEM_OPEN)"},
    ErrorDefinition{ZRARCHIVEM_CLOSE,
                    "ZrArchiveM::Close() Error  \n\t Could not open file for writing \n\t (ZRARCHIVEM_CLOSE)"},
    ErrorDefinition{ZRARCHIVEM_GETVALUESTRING, "ZrArchiveM::GetValueString() Error  \n\t (ZRARCHIVEM_GETVALUESTRING)"},
    ErrorDefinition{
        ZRARCHIVEM_GETVALUESTRING_SYNTAXERROR,
        "ZrArchiveM::GetValueString() Error  \n\t Syntax error \n\t (ZRARCHIVEM_GETVALUESTRING_SYNTAXERROR)"},
    ErrorDefinition{
        ZRARCHIVEM_GETVALUESTRING_OBJECTNOTFOUND,
        "ZrArchiveM::GetValueString() Error  \n\t Object not found \n\t (ZRARCHIVEM_GETVALUESTRING_OBJECTNOTFOUND)"},
    ErrorDefinition{ZRARCHIVEM_READOBJECT, "ZrArchiveM::ReadObject() Error  \n\t (ZRARCHIVEM_READOBJECT)"},
    ErrorDefinition{ZRARCHIVEM_READOBJECT_TYPEMISMATCH,
                    "ZrArchiveM::ReadObject() Error  \n\t Type mismatch \n\t (ZRARCHIVEM_READOBJECT_TYPEMISMATCH)"},
    ErrorDefinition{ZRARCHIVEM_READOBJECT_SYNTAXERROR,
                    "ZrArchiveM::ReadObject() Error  \n\t Syntax error \n\t (ZRARCHIVEM_READOBJECT_SYNTAXERROR)"},
    ErrorDefinition{
        ZRARCHIVEM_GETVALUE_SYNTAXERROR,
        "ZrArchiveM::GetValue() Error  \n\t Could not convert string to value \n\t (ZRARCHIVEM_GETVALUE_SYNTAXERROR)"},
    ErrorDefinition{ZRARCHIVEM_GETVALUE_NOMATRIX,
                    "ZrArchiveM::GetValue() Error  \n\t Invalid matrix dimensions \n\t (ZRARCHIVEM_GETVALUE_NOMATRIX)"},
    ErrorDefinition{ZRARCHIVEM_READARRAY, "ZrArchiveM::ReadArray() Error  \n\t (ZRARCHIVEM_READARRAY)"},
    ErrorDefinition{ZRARCHIVEM_READARRAY_TYPEMISMATCH,
                    "ZrArchiveM::ReadArray() Error  \n\t Type mismatch \n\t (ZRARCHIVEM_READARRAY_TYPEMISMATCH)"},
    ErrorDefinition{ZRARCHIVEM_READARRAY_INVALIDSIZE,
                    "ZrArchiveM::ReadArray() Error  \n\t Size specified in ReadArray() doesn't match the size found in "
                    "archive \n\t (ZRARCHIVEM_READARRAY_INVALIDSIZE)"},
    ErrorDefinition{ZRARCHIVEM_READARRAY_SYNTAXERROR,
                    "ZrArchiveM::ReadArray() Error  \n\t Syntax error while reading array element \n\t "
                    "(ZRARCHIVEM_READARRAY_SYNTAXERROR)"},
    ErrorDefinition{ZRARCHIVEM_READMATRIX, "ZrArchiveM::ReadMatrix() Error  \n\t (ZRARCHIVEM_READMATRIX)"},
    ErrorDefinition{ZRARCHIVEM_READMATRIX_TYPEMISMATCH,
                    "ZrArchiveM::ReadMatrix() Error  \n\t Type mismatch \n\t (ZRARCHIVEM_READMATRIX_TYPEMISMATCH)"},
    ErrorDefinition{ZRARCHIVEM_READMATRIX_INVALIDSIZE,
                    "ZrArchiveM::ReadMatrix() Error  \n\t Size specified in ReadMatrix() doesn't match the size found "
                    "in archive \n\t (ZRARCHIVEM_READMATRIX_INVALIDSIZE)"},
    ErrorDefinition{
        ZRARCHIVEM_READMATRIX_NOMATRIX,
        "ZrArchiveM::ReadMatrix() Error  \n\t Invalid matrix dimensions \n\t (ZRARCHIVEM_READMATRIX_NOMATRIX)"},
    ErrorDefinition{ZRARCHIVEM_READMATRIX_INVALIDNUMCOLUMNS,
                    "ZrArchiveM::ReadMatrix() Error  \n\t Number of columns specified in ReadMatrix() doesn't match "
                    "the number found in archive \n\t (ZRARCHIVEM_READMATRIX_INVALIDNUMCOLUMNS)"},
    ErrorDefinition{ZRARCHIVEM_WRITEOBJECT_ALREADYWRITTEN,
                    "ZrArchiveM::WriteObject() Error  \n\t Object with the same name already written \n\t "
                    "(ZRARCHIVEM_WRITEOBJECT_ALREADYWRITTEN)"},
    ErrorDefinition{ZRARCHIVEM_WRITEARRAY_ALREADYWRITTEN,
                    "ZrArchiveM::WriteArray() Error  \n\t Array with the same name already written \n\t "
                    "(ZRARCHIVEM_WRITEARRAY_ALREADYWRITTEN)"},
    ErrorDefinition{ZRARCHIVEM_WRITEMATRIX_ALREADYWRITTEN,
                    "ZrArchiveM::WriteMatrix() Error  \n\t Matrix with the same name already written \n\t "
                    "(ZRARCHIVEM_WRITEMATRIX_ALREADYWRITTEN)"},
    ErrorDefinition{ZRARCHIVEM_WRITEOBJECT_NOOUTPUTSTREAM,
                    "ZrArchiveM::WriteObject() Error  \n\t Output stream is 0-pointer. Use SelectOutputStream() first "
                    "\n\t (ZRARCHIVEM_WRITEOBJECT_NOOUTPUTSTREAM)"},
    ErrorDefinition{ZRARCHIVEM_READOBJECT_NOINPUTSTREAM,
                    "ZrArchiveM::GetValueString() Error  \n\t Input stream is 0-pointer. Use SelectInputStream() first "
                    "\n\t (ZRARCHIVEM_READOBJECT_NOINPUTSTREAM)"},
    ErrorDefinition{ZRARCHIVEM_READFIRSTFLTMATRIX_NOINPUTSTREAM,
                    "ZrArchiveM::ReadFirstFltMatrix() Error  \n\t Input stream is 0-pointer. Use SelectInputStream() "
                    "first \n\t (ZRARCHIVEM_READFIRSTFLTMATRIX_NOINPUTSTREAM)"},
    ErrorDefinition{ZRARCHIVEM_READVALUESTRING_ENDOFFILE,
                    "ZrArchiveM::ReadValueString() Error  \n\t Unexpected end of file found \n\t "
                    "(ZRARCHIVEM_READVALUESTRING_ENDOFFILE)"},
    ErrorDefinition{
        ZRARCHIVEM_READNEXTFLTMATRIX_TYPEMISMATCH,
        "ZrArchiveM::ReadNextFltMatrix() Error  \n\t Type mismatch \n\t (ZRARCHIVEM_READNEXTFLTMATRIX_TYPEMISMATCH)"},
    ErrorDefinition{
        ZRARCHIVEM_READNEXTFLTMATRIX_SYNTAXERROR,
        "ZrArchiveM::ReadNextFltMatrix() Error  \n\t Syntax error \n\t (ZRARCHIVEM_READNEXTFLTMATRIX_SYNTAXERROR)"},
    ErrorDefinition{ZRARCHIVEM_READFIRSTFLTMATRIX,
                    "ZrArchiveM::ReadFirstFltMatrix() Error  \n\t (ZRARCHIVEM_READFIRSTFLTMATRIX)"},
    ErrorDefinition{
        ZRARCHIVEM_READNEXTFLTMATRIX_EOF,
        "ZrArchiveM::ReadNextFltMatrix() Error  \n\t No (more) matrices found \n\t (ZRARCHIVEM_READNEXTFLTMATRIX_EOF)"},
    ErrorDefinition{ZRARCHIVEM_WRITEOBJECT_STRINGARRAY_EMPTY,
                    "ZrArchiveM::WriteObject() Error  \n\t The string array is empty \n\t "
                    "(ZRARCHIVEM_WRITEOBJECT_STRINGARRAY_EMPTY)"},
    ErrorDefinition{ZRCOREVALUE1D_READFROM, "ZrValue1D::ReadFrom() Error  \n\t (ZRCOREVALUE1D_READFROM)"},
    ErrorDefinition{ZRCOREVALUE1D_WRITEON, "ZrValue1D::WriteOn() Error  \n\t (ZRCOREVALUE1D_WRITEON)"},
    ErrorDefinition{ZRCOREVALUE3D_READFROM, "ZrValue3D::ReadFrom() Error  \n\t (ZRCOREVALUE3D_READFROM)"},
    ErrorDefinition{
        ZRCOREVALUE3D_READFROM_BADDIMENSION,
        "ZrValue3D::ReadFrom() Error  \n\t Matrix dimensions are invalid. (ZRCOREVALUE3D_READFROM_BADDIMENSION)"},
    ErrorDefinition{ZRCOREVALUE3D_WRITEON, "ZrValue3D::WriteOn() Error  \n\t (ZRCOREVALUE3D_WRITEON)"},
    ErrorDefinition{ZRCOREVALUE6D_READFROM, "ZrValue6D::ReadFrom() Error  \n\t (ZRCOREVALUE6D_READFROM)"},
    ErrorDefinition{
        ZRCOREVALUE6D_READFROM_BADDIMENSION,
        "ZrValue6D::ReadFrom() Error  \n\t Matrix dimensions are invalid. (ZRCOREVALUE6D_READFROM_BADDIMENSION)"},
    ErrorDefinition{ZRCOREVALUE6D_READFROM_NOTFRAME,
                    "ZrValue6D::ReadFrom() Error  \n\t Matrix is not a frame. (ZRCOREVALUE6D_READFROM_NOTFRAME)"},
    ErrorDefinition{ZRCOREVALUE6D_WRITEON, "ZrValue6D::WriteOn() Error  \n\t (ZRCOREVALUE6D_WRITEON)"},
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
