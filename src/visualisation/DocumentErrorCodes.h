#pragma once
// Codes of the visualisation document reader and of the scene-mapping construction.

#include <array>

#include "core/ErrorDefinition.h"

namespace quillon {

// Raised by ZrXMLParser::Parse. 1290809, 1290814, 1290815, 1290817, 1290819 and 1290827 are
// registered but never raised: a bad scene reports 1290808, a second label and a missing
// version report 1290818. 1290811 is not used.
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_PARSE_BADXMLFILE = 1290800;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_PARSE_NOFROMATTRIBUTE = 1290801;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_PARSE_NOTOATTRIBUTE = 1290802;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_PARSE_BADFROMATTRIBUTE = 1290803;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_PARSE_BADTOATTRIBUTE = 1290804;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_PARSE_NOVISUALISATIONFOUND = 1290805;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_PARSE_BADCOLOURMAP = 1290806;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_PARSE_BADINVALIDCOLOURMAP = 1290807;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_PARSE_NOSCENE = 1290808;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_PARSE_BADSCENE = 1290809;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_PARSE_BADSCALE = 1290810;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_PARSE_BADRENDERINVALIDS = 1290812;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_PARSE = 1290813;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_PARSE_EXTERNPROTOFORBIDDEN = 1290814;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_PARSE_TARGETNODEINUSE = 1290815;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_PARSE_EMPTYTARGETATTRIBUTE = 1290816;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_PARSE_ANCHORFORBIDDEN = 1290817;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_PARSE_MULTIPLEVISUALISATIONSFOUND = 1290818;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_PARSE_MULTIPLELABELSFORBIDDEN = 1290819;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_PARSE_MULTIPLESETTINGSFORBIDDEN = 1290820;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_PARSE_MULTIPLERENDERINVALIDSFORBIDDEN = 1290821;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_PARSE_MULTIPLESETTINGSCOLOURMAPSFORBIDDEN = 1290822;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_PARSE_MULTIPLESETTINGSINVALIDCOLOURMAPSFORBIDDEN = 1290823;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_PARSE_MULTIPLESCENESFORBIDDEN = 1290824;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_PARSE_MULTIPLEVERSIONSFORBIDDEN = 1290825;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_PARSE_VERSIONNUMBERNOTSUPPORTED = 1290826;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_PARSE_NOVERSIONFOUND = 1290827;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_PARSE_MULTIPLECOLOURMAPSFORBIDDEN = 1290828;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_PARSE_MULTIPLEINVALIDCOLOURMAPSFORBIDDEN = 1290829;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_PARSE_BADSCENEFORMATATTRIBUTE = 1290830;

// The vocabulary of the route binding; registered, raised by nothing.
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_NODENAMENOTFOUND = 1290840;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_MULTIPLENODENAMESFOUND = 1290841;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_NODEHASNOFIELDNAME = 1290842;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_UNSUPPORTEDTYPEOFTARGETATTRIBUTE = 1290843;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_TARGETATTRIBUTEBADCHANNELTYPE = 1290845;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_IMPOSSIBLERENDERINVALIDENUMERATOR = 1290850;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_SFROTATIONMUSTBEINTRANSFORMNODE = 1290851;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_FOUNDFIELDISNOTROTATIONFIELD = 1290852;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_SFTANSLATIONMUSTBEINTRANSFORMNODE = 1290853;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_FOUNDFIELDISNOTTRANSLATIONFIELD = 1290854;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING = 1290855;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_MULTIPLETRANSFORMTARGETSFORBIDDEN = 1290856;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_REGISTERSTOREDSCENEMAPPINGS = 1290860;
inline constexpr ErrorCode
    ZRVISUALISATIONXMLREADER_ADDTARGETNODEANDFIELDTOCHECKLIST_TARGETFIELDINUSEBYANOTHEREXTERNALROUTE = 1290861;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_CONSTRUCTLISTOFALLNAMESINTREE_MULTIPLENODESWITHSAMENAME = 1290862;
inline constexpr ErrorCode ZRVISUALISATIONXMLREADER_CONSTRUCTLISTOFALLNAMESINTREE = 1290863;

inline constexpr std::array kDocumentErrors{
    ErrorDefinition{ZRVISUALISATIONXMLREADER_PARSE_BADXMLFILE,
                    "ZrXMLParser::Parse() Error \n\t The reveived xml file has bad form or does not contain a "
                    "visualisation element! Unable parse this file without a proper visualisation xml element. "
                    "(ZRVISUALISATIONXMLREADER_PARSE_BADXMLFILE)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_PARSE_NOFROMATTRIBUTE,
                    "ZrXMLParser::Parse() Error \n\t An external route has no 'from' attribute. See the annotated xml "
                    "file for more information. (ZRVISUALISATIONXMLREADER_PARSE_NOFROMATTRIBUTE)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_PARSE_NOTOATTRIBUTE,
                    "ZrXMLParser::Parse() Error \n\t An external route has no 'to' attribute. See the annotated xml "
                    "file for more information. (ZRVISUALISATIONXMLREADER_PARSE_NOTOATTRIBUTE)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_PARSE_BADFROMATTRIBUTE,
                    "ZrXMLParser::Parse() Error \n\t An external route has a malformed 'from' attribute. See the "
                    "annotated xml file for more information. (ZRVISUALISATIONXMLREADER_PARSE_BADFROMATTRIBUTE)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_PARSE_BADTOATTRIBUTE,
                    "ZrXMLParser::Parse() Error \n\t An external route has a malformed 'to' attribute. See the "
                    "annotated xml file for more information. (ZRVISUALISATIONXMLREADER_PARSE_BADTOATTRIBUTE)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_PARSE_NOVISUALISATIONFOUND,
                    "ZrXMLParser::Parse() Error \n\t There is no 'Visualisation' element found in the xml file. "
                    "(ZRVISUALISATIONXMLREADER_PARSE_NOVISUALISATIONFOUND)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_PARSE_BADCOLOURMAP,
                    "ZrXMLParser::Parse() Error \n\t A colourmap is unreadable or has invalid dimensions. "
                    "(ZRVISUALISATIONXMLREADER_PARSE_BADCOLOURMAP)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_PARSE_BADINVALIDCOLOURMAP,
                    "ZrXMLParser::Parse() Error \n\t An invalidcolourmap is unreadable or has invalid dimensions. "
                    "(ZRVISUALISATIONXMLREADER_PARSE_BADINVALIDCOLOURMAP)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_PARSE_NOSCENE,
                    "ZrXMLParser::Parse() Error \n\t No scene description found in the visualisation component of your "
                    "xml file. (ZRVISUALISATIONXMLREADER_PARSE_NOSCENE)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_PARSE_BADSCENE,
                    "ZrXMLParser::Parse() Error \n\t Malformed scene description found in xml file. "
                    "(ZRVISUALISATIONXMLREADER_PARSE_BADSCENE)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_PARSE_BADSCALE,
                    "ZrXMLParser::Parse() Error \n\t An ExternRoute conatains an invalid scale factor. See Annotated "
                    "file for more information. (ZRVISUALISATIONXMLREADER_PARSE_BADSCALE)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_PARSE_BADRENDERINVALIDS,
                    "ZrXMLParser::Parse() Error \n\t Render Invalids should be 'freeze' or 'hide'. "
                    "(ZRVISUALISATIONXMLREADER_PARSE_BADRENDERINVALIDS)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_PARSE, "ZrXMLParser::Parse() Error \n\t (ZRVISUALISATIONXMLREADER_PARSE)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_PARSE_EXTERNPROTOFORBIDDEN,
                    "ZrXMLParser::Parse() Error \n\t The EXTERNPROTO statement is forbidden in the scene description. "
                    "(ZRVISUALISATIONXMLREADER_PARSE_EXTERNPROTOFORBIDDEN)"},
    ErrorDefinition{
        ZRVISUALISATIONXMLREADER_PARSE_TARGETNODEINUSE,
        "ZrXMLParser::Parse() Error \n\t The target node in the route is already in use. Dicrecting multiple channels "
        "to the same target node is forbidden. (ZRVISUALISATIONXMLREADER_PARSE_TARGETNODEINUSE)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_PARSE_EMPTYTARGETATTRIBUTE,
                    "ZrXMLParser::Parse() Error \n\t An empty target attribute name is forbidden. Leave away the dot "
                    "after the target node name when you want to use optional target field names. "
                    "(ZRVISUALISATIONXMLREADER_PARSE_EMPTYTARGETATTRIBUTE)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_PARSE_ANCHORFORBIDDEN,
                    "ZrXMLParser::Parse() Error \n\t The Anchor statement is forbidden in the scene description. "
                    "(ZRVISUALISATIONXMLREADER_PARSE_ANCHORFORBIDDEN)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_PARSE_MULTIPLEVISUALISATIONSFOUND,
                    "ZrXMLParser::Parse() Error \n\t Multiple visualisations in your xml file is forbidden. See "
                    "annotated file. (ZRVISUALISATIONXMLREADER_PARSE_MULTIPLEVISUALISATIONSFOUND)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_PARSE_MULTIPLELABELSFORBIDDEN,
                    "ZrXMLParser::Parse() Error \n\t The visualisation component of your xml file has multiple lables. "
                    "This is forbidden, please enter zero or one label. See annotated file. "
                    "(ZRVISUALISATIONXMLREADER_PARSE_MULTIPLELABELSFORBIDDEN)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_PARSE_MULTIPLESETTINGSFORBIDDEN,
                    "ZrXMLParser::Parse() Error \n\t The visualisation component of your xml file has multiple "
                    "settings. This is forbidden, please enter zero or one settings. See annotated file. "
                    "(ZRVISUALISATIONXMLREADER_PARSE_MULTIPLESETTINGSFORBIDDEN)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_PARSE_MULTIPLERENDERINVALIDSFORBIDDEN,
                    "ZrXMLParser::Parse() Error \n\t The settings in the visualisation component of your xml file has "
                    "multiple renderinvalids. This is forbidden, please enter zero or one renderinvalids. See "
                    "annotated file. (ZRVISUALISATIONXMLREADER_PARSE_MULTIPLERENDERINVALIDSFORBIDDEN)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_PARSE_MULTIPLESETTINGSCOLOURMAPSFORBIDDEN,
                    "ZrXMLParser::Parse() Error \n\t The settings in the visualisation component of your xml file has "
                    "multiple colourmaps. This is forbidden, please enter zero or one colourmaps. See annotated file. "
                    "(ZRVISUALISATIONXMLREADER_PARSE_MULTIPLESETTINGSCOLOURMAPSFORBIDDEN)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_PARSE_MULTIPLESETTINGSINVALIDCOLOURMAPSFORBIDDEN,
                    "ZrXMLParser::Parse() Error \n\t The settings in the visualisation component of your xml file has "
                    "multiple invalidcolourmaps. This is forbidden, please enter zero or one invalidcolourmaps. See "
                    "annotated file. (ZRVISUALISATIONXMLREADER_PARSE_MULTIPLESETTINGSINVALIDCOLOURMAPSFORBIDDEN)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_PARSE_MULTIPLESCENESFORBIDDEN,
                    "ZrXMLParser::Parse() Error \n\t Your Visualisation component in the xml file contains multiple "
                    "scenes. This is forbidden, please enter zero or one scenes. See annotated file. "
                    "(ZRVISUALISATIONXMLREADER_PARSE_MULTIPLESCENESFORBIDDEN)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_PARSE_MULTIPLEVERSIONSFORBIDDEN,
                    "ZrXMLParser::Parse() Error \n\t Your Visualisation component in the xml file contains multiple "
                    "version numbers. This is forbidden, please enter exactly one version number. See annotated file. "
                    "(ZRVISUALISATIONXMLREADER_PARSE_MULTIPLEVERSIONSFORBIDDEN)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_PARSE_VERSIONNUMBERNOTSUPPORTED,
                    "ZrXMLParser::Parse() Error \n\t Your Visualisation component in the xml file has a version number "
                    "that is not supported by this version of the Quillon ActiveX Component. See annotated file. "
                    "(ZRVISUALISATIONXMLREADER_PARSE_VERSIONNUMBERNOTSUPPORTED)"},
    ErrorDefinition{
        ZRVISUALISATIONXMLREADER_PARSE_NOVERSIONFOUND,
        "ZrXMLParser::Parse() Error \n\t Your Visualisation component in the xml file contains no version number! You "
        "must enter a version number. See annotated file. (ZRVISUALISATIONXMLREADER_PARSE_NOVERSIONFOUND)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_PARSE_MULTIPLECOLOURMAPSFORBIDDEN,
                    "ZrXMLParser::Parse() Error \n\t An External route contains multiple colourmaps! You must enter "
                    "one or zero colourmaps per external route. See annotated file. "
                    "(ZRVISUALISATIONXMLREADER_PARSE_MULTIPLECOLOURMAPSFORBIDDEN)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_PARSE_MULTIPLEINVALIDCOLOURMAPSFORBIDDEN,
                    "ZrXMLParser::Parse() Error \n\t An External route contains multiple invalidcolourmaps! You must "
                    "enter one or zero invalidcolourmaps per external route. See annotated file. "
                    "(ZRVISUALISATIONXMLREADER_PARSE_MULTIPLEINVALIDCOLOURMAPSFORBIDDEN)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_PARSE_BADSCENEFORMATATTRIBUTE,
                    "ZrXMLParser::Parse() Error \n\t The 'format' attribute of your scene element in the xml file must "
                    "be equal to 'VRML97'. (ZRVISUALISATIONXMLREADER_PARSE_BADSCENEFORMATATTRIBUTE)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_NODENAMENOTFOUND,
                    "ZrXMLParser::ConstructSceneMapping() Error \n\t There is no node found in the scene with this "
                    "name. (ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_NODENAMENOTFOUND)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_MULTIPLENODENAMESFOUND,
                    "ZrXMLParser::ConstructSceneMapping() Error \n\t There are more than one nodes in the scene with "
                    "the same node name where you want to map a channel onto. "
                    "(ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_MULTIPLENODENAMESFOUND)"},
    ErrorDefinition{
        ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_NODEHASNOFIELDNAME,
        "ZrXMLParser::ConstructSceneMapping() Error \n\t The node is found, but it does not contain a field with name "
        "you entered for the targetAttribute. (ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_NODEHASNOFIELDNAME)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_UNSUPPORTEDTYPEOFTARGETATTRIBUTE,
                    "ZrXMLParser::ConstructSceneMapping() Error \n\t The node is found, but it does not contain a "
                    "field with name you entered for the targetAttribute. "
                    "(ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_UNSUPPORTEDTYPEOFTARGETATTRIBUTE)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_TARGETATTRIBUTEBADCHANNELTYPE,
                    "ZrXMLParser::ConstructSceneMapping() Error \n\t The target attribute field is of a type that can "
                    "not accept this type of channel. Impossible to map this type of channel onto this attribute "
                    "field. (ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_TARGETATTRIBUTEBADCHANNELTYPE)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_IMPOSSIBLERENDERINVALIDENUMERATOR,
                    "ZrXMLParser::ConstructSceneMapping() Error \n\t This enumerated renderinvalid is impossible. "
                    "Someone extended the enumerator types but did not update the code. "
                    "(ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_IMPOSSIBLERENDERINVALIDENUMERATOR)"},
    ErrorDefinition{
        ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_SFROTATIONMUSTBEINTRANSFORMNODE,
        "ZrXMLParser::ConstructSceneMapping() Error \n\t SFRotation: takes a 6D channel. The target node must be a "
        "Transform node. (ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_SFROTATIONMUSTBEINTRANSFORMNODE)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_FOUNDFIELDISNOTROTATIONFIELD,
                    "ZrXMLParser::ConstructSceneMapping() Error \n\t The target field was mentioned to be rotation for "
                    "6D but it is not. Should never happen, other error messages must have been appeared before this "
                    "could be shown. (ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_FOUNDFIELDISNOTROTATIONFIELD)"},
    ErrorDefinition{
        ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_SFTANSLATIONMUSTBEINTRANSFORMNODE,
        "ZrXMLParser::ConstructSceneMapping() Error \n\t SFTranslation: takes a 3D channel. The target node must be a "
        "Transform node. (ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_SFTANSLATIONMUSTBEINTRANSFORMNODE)"},
    ErrorDefinition{
        ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_FOUNDFIELDISNOTTRANSLATIONFIELD,
        "ZrXMLParser::ConstructSceneMapping() Error \n\t The target field was mentioned to be translation for 3D but "
        "it is not. Should never happen, other error messages must have been appeared before this could be shown. "
        "(ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_FOUNDFIELDISNOTTRANSLATIONFIELD)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING,
                    "ZrXMLParser::ConstructSceneMapping() Error \n\t (ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING)"},
    ErrorDefinition{
        ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_MULTIPLETRANSFORMTARGETSFORBIDDEN,
        "ZrXMLParser::ConstructSceneMapping() Error \n\t The target node is a transform node that occurs multiple "
        "times in the scene graph. This is forbidden because one can not cascade the material properties to himself. "
        "(ZRVISUALISATIONXMLREADER_CONSTRUCTSCENEMAPPING_MULTIPLETRANSFORMTARGETSFORBIDDEN)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_REGISTERSTOREDSCENEMAPPINGS,
                    "ZrXMLParser::RegisterStoredSceneMappings() Error \n\t Your currently used scenemappings may be "
                    "damaged, so we cleared all mappings. (ZRVISUALISATIONXMLREADER_REGISTERSTOREDSCENEMAPPINGS)"},
    ErrorDefinition{
        ZRVISUALISATIONXMLREADER_ADDTARGETNODEANDFIELDTOCHECKLIST_TARGETFIELDINUSEBYANOTHEREXTERNALROUTE,
        "ZrXMLParser::AddTargetNodeAndFieldToCheckList() Error \n\t The target field in this node is already in use by "
        "a previous defined external route. This is forbidden. "
        "(ZRVISUALISATIONXMLREADER_ADDTARGETNODEANDFIELDTOCHECKLIST_TARGETFIELDINUSEBYANOTHEREXTERNALROUTE)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_CONSTRUCTLISTOFALLNAMESINTREE_MULTIPLENODESWITHSAMENAME,
                    "ZrXMLParser::ConstructListOfAllNamesInTree() Error \n\t There are nodes in the scene graph that "
                    "have the same name. This is forbidden. Be sure that evere node has a unique name, or leave it "
                    "nameless. (ZRVISUALISATIONXMLREADER_CONSTRUCTLISTOFALLNAMESINTREE_MULTIPLENODESWITHSAMENAME)"},
    ErrorDefinition{ZRVISUALISATIONXMLREADER_CONSTRUCTLISTOFALLNAMESINTREE,
                    "ZrXMLParser::ConstructListOfAllNamesInTree() Error \n\t "
                    "(ZRVISUALISATIONXMLREADER_CONSTRUCTLISTOFALLNAMESINTREE)"},
};

}  // namespace quillon
