#include "visualisation/ZrXMLParser.h"

#include <charconv>
#include <cstdint>
#include <optional>

#include "channels/FltMatrixText.h"
#include "core/CoreErrorCodes.h"
#include "core/LargeBuffers.h"
#include "core/Trace.h"
#include "core/ZrErrorHandler.h"
#include "scenegraph/ISGBuilder.h"
#include "scenegraph/ISceneGraphImplementor.h"
#include "visualisation/DocumentErrorCodes.h"
#include "visualisation/IMappingRegistrar.h"
#include "visualisation/ISceneMappingBuilder.h"
#include "vrml/GroupingNodes.h"

namespace quillon {
namespace {

bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// Reads a decimal integer the way atoi does: leading white space, a sign, then digits.
// The caller keeps the text short enough that it cannot overflow.
long ReadInteger(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size() && IsSpace(text[i])) ++i;
  bool negative = false;
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) negative = text[i++] == '-';
  long value = 0;
  while (i < text.size() && IsDigit(text[i])) value = value * 10 + (text[i++] - '0');
  return negative ? -value : value;
}

// Reads the longest leading decimal number (after white space) as atof does; 0 when there is
// none or it is out of range. Hexadecimal, "inf" and "nan" are not numbers here.
double ReadLeadingDouble(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size() && IsSpace(text[i])) ++i;
  if (i < text.size() && text[i] == '+') ++i;
  const std::size_t start = i;
  if (i < text.size() && text[i] == '-') ++i;
  std::size_t digits = 0;
  while (i < text.size() && IsDigit(text[i])) ++i, ++digits;
  if (i < text.size() && text[i] == '.') {
    ++i;
    while (i < text.size() && IsDigit(text[i])) ++i, ++digits;
  }
  if (digits == 0) return 0.0;
  if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
    std::size_t j = i + 1;
    if (j < text.size() && (text[j] == '+' || text[j] == '-')) ++j;
    if (j < text.size() && IsDigit(text[j])) {
      while (j < text.size() && IsDigit(text[j])) ++j;
      i = j;
    }
  }
  double value = 0.0;
  const auto result = std::from_chars(text.data() + start, text.data() + i, value);
  return result.ec == std::errc() ? value : 0.0;
}

// One bracketed part of "from", searched from `pos`: the "]" must stand one to nine
// characters behind its "[", so at most eight characters fit inside. Moves `pos` behind the "]".
bool NextBracket(std::string_view from, std::size_t& pos, std::string_view& inside) {
  const std::size_t open = from.find('[', pos);
  if (open == std::string_view::npos) return false;
  const std::size_t close = from.find(']', open + 1);
  if (close == std::string_view::npos || close == open + 1 || close - open >= 10) return false;
  inside = from.substr(open + 1, close - open - 1);
  pos = close + 1;
  return true;
}

// A group or channel number: a decimal integer, with only zeros, dots and signs where that
// integer is 0.
bool ReadNumberPart(std::string_view inside, long& value) {
  value = ReadInteger(inside);
  if (value != 0) return true;
  for (char c : inside)
    if (c != '0' && c != '.' && c != '-' && c != '+') return false;
  return true;
}

// "name[group][channel][kind]" into the route; `groupText` keeps the group as written.
// A blank anywhere makes the text malformed.
bool ReadFrom(std::string_view from, RouteRecord& route, std::string_view& groupText) {
  if (from.find_first_of(" \t") != std::string_view::npos) return false;
  const std::size_t firstOpen = from.find('[');
  if (firstOpen == std::string_view::npos || firstOpen == 0) return false;
  const std::string_view name = from.substr(0, firstOpen);
  if (!IsLetter(name.front())) return false;
  for (char c : name)
    if (!IsLetter(c) && !IsDigit(c) && c != '_') return false;

  std::size_t pos = 0;
  std::string_view groupPart, channelPart, kindPart;
  long group = 0, channel = 0;
  if (!NextBracket(from, pos, groupPart) || !ReadNumberPart(groupPart, group)) return false;
  if (!NextBracket(from, pos, channelPart) || !ReadNumberPart(channelPart, channel)) return false;
  if (!NextBracket(from, pos, kindPart)) return false;
  if (kindPart == "1D")
    route.channelKind = ChannelKind::Kind1D;
  else if (kindPart == "3D")
    route.channelKind = ChannelKind::Kind3D;
  else if (kindPart == "6D")
    route.channelKind = ChannelKind::Kind6D;
  else if (kindPart == "Time")
    route.channelKind = ChannelKind::KindTime;
  else
    return false;

  route.controlPathName = std::string(name);
  route.groupNumber = static_cast<std::int32_t>(group);
  route.channelNumber = static_cast<std::uint32_t>(channel);
  groupText = groupPart;
  return true;
}

}  // namespace

ZrXMLParser::ZrXMLParser(ISceneGraphImplementor* sceneGraph) : sceneGraph_(sceneGraph) {}

ZrXMLParser::~ZrXMLParser() = default;

FltMatrix ZrXMLParser::BuiltInColourMap() {
  static constexpr double kTriples[9][3] = {{0, 0, 0.5}, {0, 0, 1},   {0, 0.5, 1}, {0, 1, 1},  {0.5, 1, 0.5},
                                            {1, 1, 0},   {1, 0.5, 0}, {1, 0, 0},   {0.5, 0, 0}};
  FltMatrix map(9, 3);
  for (std::size_t row = 0; row < 9; ++row)
    for (std::size_t column = 0; column < 3; ++column) map(row, column) = kTriples[row][column];
  return map;
}

// The one annotation routine: brackets the current element (found again by name) or, without
// a name, the current position, hands out the document and raises the code.
ErrorCode ZrXMLParser::Annotate(ErrorCode code, std::string_view elementName, std::string* annotated) {
  markup_.InsertNode(CMarkupSTL::MNT_COMMENT, "begin_offending_input", true);
  if (!elementName.empty()) markup_.FindSibling(elementName);
  markup_.InsertNode(CMarkupSTL::MNT_COMMENT, "end_offending_input", false);
  if (annotated) *annotated = markup_.GetDocumentText();
  return RaiseRootError(code);
}

ErrorCode ZrXMLParser::Parse(IMappingRegistrar& registrar, std::string_view xmlDescription, std::string* annotated,
                             std::string* neededChannelGroups) {
  const std::uint32_t startTick = GetTickCount();
  if (neededChannelGroups) neededChannelGroups->clear();
  if (annotated) annotated->clear();
  label_.clear();
  hide_ = true;
  routes_.clear();

  std::string copy;
  ReserveLarge(copy, xmlDescription.size());
  copy.assign(xmlDescription);
  markup_.LoadText(std::move(copy));
  if (!markup_.IsWellFormed()) return RaiseRootError(ZRVISUALISATIONXMLREADER_PARSE_BADXMLFILE);
  if (!markup_.FindSibling("Visualisation")) return RaiseRootError(ZRVISUALISATIONXMLREADER_PARSE_NOVISUALISATIONFOUND);

  // Deliberately a test of the raw text: only "<Visualisation>" written exactly counts.
  constexpr std::string_view kVisualisationTag = "<Visualisation>";
  const std::string& text = markup_.GetDocumentText();
  const std::size_t firstTag = text.find(kVisualisationTag);
  if (firstTag != std::string::npos && text.find(kVisualisationTag, firstTag + 1) != std::string::npos)
    return Annotate(ZRVISUALISATIONXMLREADER_PARSE_MULTIPLEVISUALISATIONSFOUND, "Visualisation", annotated);

  markup_.EnterElement();
  if (markup_.FindSibling("Label")) {
    label_ = markup_.GetText();
    if (markup_.FindSibling("Label"))
      return Annotate(ZRVISUALISATIONXMLREADER_PARSE_MULTIPLEVISUALISATIONSFOUND, "Label", annotated);
  }

  // A missing version reports the same code as a second visualisation, on purpose.
  if (!markup_.FindSibling("Version"))
    return Annotate(ZRVISUALISATIONXMLREADER_PARSE_MULTIPLEVISUALISATIONSFOUND, {}, annotated);
  const std::string version = markup_.GetText();
  if (markup_.FindSibling("Version"))
    return Annotate(ZRVISUALISATIONXMLREADER_PARSE_MULTIPLEVERSIONSFORBIDDEN, "Version", annotated);
  if (version != supportedVersion_)
    return Annotate(ZRVISUALISATIONXMLREADER_PARSE_VERSIONNUMBERNOTSUPPORTED, "Version", annotated);

  colourMap_ = BuiltInColourMap();
  invalidColour_ = FltMatrix();
  ReadFltMatrixText("[1, 0, 0]", invalidColour_);

  if (const ErrorCode code = ReadSettings(annotated)) return code;

  if (!markup_.FindSibling("Scene")) return Annotate(ZRVISUALISATIONXMLREADER_PARSE_NOSCENE, {}, annotated);
  const std::string format = markup_.GetAttribute("format");
  // A scene in one CDATA section is read where it stands in the document; other text is
  // unescaped into a copy.
  const std::optional<CMarkupSTL::Span> sceneSpan = markup_.GetCdataSpan();
  std::string sceneCopy = sceneSpan ? std::string() : markup_.GetText();
  const bool noSceneText = sceneSpan ? sceneSpan->length == 0 : sceneCopy.empty();
  if (markup_.FindSibling("Scene"))
    return Annotate(ZRVISUALISATIONXMLREADER_PARSE_MULTIPLESCENESFORBIDDEN, "Scene", annotated);
  if (format != "VRML97") return Annotate(ZRVISUALISATIONXMLREADER_PARSE_BADSCENEFORMATATTRIBUTE, "Scene", annotated);
  if (noSceneText) return Annotate(ZRVISUALISATIONXMLREADER_PARSE_NOSCENE, "Scene", annotated);

  for (std::string_view route : {"ExternRoute", "ExternRouteToChildren"}) {
    while (markup_.FindSibling(route))
      if (const ErrorCode code = ReadRoute(route, annotated, neededChannelGroups)) return code;
  }

  // Everything else is read, so the document may be cut behind the scene; its text goes
  // before the scene graph is built from the nodes.
  const std::uint32_t sceneTick = GetTickCount();
  VRML::Group scene;
  const int sceneRead = scene.parse(sceneSpan ? markup_.CutAfter(*sceneSpan) : sceneCopy.c_str());
  markup_.Clear();
  std::string().swap(sceneCopy);
  // A scene that does not read is reported as no scene, not as a malformed one.
  if (sceneRead != 0) return RaiseRootError(ZRVISUALISATIONXMLREADER_PARSE_NOSCENE);
  Trace("Loading of VRML scene took %lf secs.\n", ElapsedSeconds(sceneTick, GetTickCount()));

  if (const ErrorCode code = BuildScene(scene)) return code;

  if (!routes_.empty()) registrar.ClearMappings();
  for (RouteRecord& route : routes_) {
    // The registrar records its own failure; the other routes are registered all the same.
    if (route.mapping) registrar.RegisterRoute(route);
  }
  Trace("Total loading of scene took %lf secs\n", ElapsedSeconds(startTick, GetTickCount()));
  return HALCYON_SUCCESS;
}

ErrorCode ZrXMLParser::ReadSettings(std::string* annotated) {
  if (!markup_.FindSibling("Settings")) return HALCYON_SUCCESS;
  if (markup_.FindSibling("Settings"))
    return Annotate(ZRVISUALISATIONXMLREADER_PARSE_MULTIPLESETTINGSFORBIDDEN, "Settings", annotated);
  markup_.EnterElement();

  std::string renderInvalids = "hide";
  if (markup_.FindSibling("RenderInvalids")) {
    renderInvalids = markup_.GetText();
    if (markup_.FindSibling("RenderInvalids"))
      return Annotate(ZRVISUALISATIONXMLREADER_PARSE_MULTIPLERENDERINVALIDSFORBIDDEN, "RenderInvalids", annotated);
  }
  if (renderInvalids == "hide")
    hide_ = true;
  else if (renderInvalids == "freeze")
    hide_ = false;
  else
    return Annotate(ZRVISUALISATIONXMLREADER_PARSE_BADRENDERINVALIDS, "RenderInvalids", annotated);

  if (const ErrorCode code =
          ReadColourMap("ColourMap", false, ZRVISUALISATIONXMLREADER_PARSE_MULTIPLESETTINGSCOLOURMAPSFORBIDDEN,
                        colourMap_, annotated))
    return code;
  if (const ErrorCode code = ReadColourMap("InvalidColourMap", true,
                                           ZRVISUALISATIONXMLREADER_PARSE_MULTIPLESETTINGSINVALIDCOLOURMAPSFORBIDDEN,
                                           invalidColour_, annotated))
    return code;
  markup_.LeaveElement();
  return HALCYON_SUCCESS;
}

// Reads the next element of that name, if there is one, as a matrix of three columns and
// at least one row (exactly one row with `oneRow`). `matrix` keeps its value when absent.
ErrorCode ZrXMLParser::ReadColourMap(std::string_view elementName, bool oneRow, ErrorCode multipleCode,
                                     FltMatrix& matrix, std::string* annotated) {
  if (!markup_.FindSibling(elementName)) return HALCYON_SUCCESS;
  const std::string text = markup_.GetText();
  if (markup_.FindSibling(elementName)) return Annotate(multipleCode, elementName, annotated);
  FltMatrix read;
  const bool shaped = ReadFltMatrixText(text, read) == HALCYON_SUCCESS && read.Columns() == 3 &&
                      (oneRow ? read.Rows() == 1 : read.Rows() >= 1);
  if (!shaped)
    return Annotate(
        oneRow ? ZRVISUALISATIONXMLREADER_PARSE_BADINVALIDCOLOURMAP : ZRVISUALISATIONXMLREADER_PARSE_BADCOLOURMAP,
        elementName, annotated);
  matrix = std::move(read);
  return HALCYON_SUCCESS;
}

ErrorCode ZrXMLParser::ReadRoute(std::string_view elementName, std::string* annotated,
                                 std::string* neededChannelGroups) {
  RouteRecord route;
  route.cascading = elementName == "ExternRouteToChildren";
  route.hide = hide_;

  const std::string from = markup_.GetAttribute("from");
  if (from.empty()) return Annotate(ZRVISUALISATIONXMLREADER_PARSE_NOFROMATTRIBUTE, elementName, annotated);
  std::string_view groupText;
  if (!ReadFrom(from, route, groupText))
    return Annotate(ZRVISUALISATIONXMLREADER_PARSE_BADFROMATTRIBUTE, elementName, annotated);
  route.from = from;

  const std::string to = markup_.GetAttribute("to");
  if (to.empty()) return Annotate(ZRVISUALISATIONXMLREADER_PARSE_NOTOATTRIBUTE, elementName, annotated);
  const std::size_t dot = to.find('.');
  if (to.find_first_of(" \t") != std::string::npos || dot == 0)
    return Annotate(ZRVISUALISATIONXMLREADER_PARSE_BADTOATTRIBUTE, elementName, annotated);
  // The one route fault that leaves the document unannotated.
  if (to.back() == '.') return RaiseRootError(ZRVISUALISATIONXMLREADER_PARSE_EMPTYTARGETATTRIBUTE);
  if (dot != std::string::npos && to.find('.', dot + 1) != std::string::npos)
    return Annotate(ZRVISUALISATIONXMLREADER_PARSE_BADTOATTRIBUTE, elementName, annotated);
  route.targetNodeName = to.substr(0, dot);
  if (dot != std::string::npos) route.targetFieldName = to.substr(dot + 1);

  route.colourMap = colourMap_;
  route.invalidColour = invalidColour_;
  markup_.EnterElement();
  if (const ErrorCode code = ReadColourMap(
          "ColourMap", false, ZRVISUALISATIONXMLREADER_PARSE_MULTIPLECOLOURMAPSFORBIDDEN, route.colourMap, annotated))
    return code;
  if (const ErrorCode code =
          ReadColourMap("InvalidColourMap", true, ZRVISUALISATIONXMLREADER_PARSE_MULTIPLEINVALIDCOLOURMAPSFORBIDDEN,
                        route.invalidColour, annotated))
    return code;
  markup_.LeaveElement();

  const std::string scaleAttribute = markup_.GetAttribute("scale");
  const std::string_view scale = scaleAttribute.empty() ? std::string_view("1") : std::string_view(scaleAttribute);
  route.scale = ReadLeadingDouble(scale);
  if (route.scale == 0.0) {
    for (char c : scale)
      if (c != '0' && c != '.') return Annotate(ZRVISUALISATIONXMLREADER_PARSE_BADSCALE, elementName, annotated);
  }

  if (neededChannelGroups) {
    neededChannelGroups->append("[").append(route.controlPathName).append(", ");
    neededChannelGroups->append(groupText).append("]");
  }
  routes_.push_back(std::move(route));
  return HALCYON_SUCCESS;
}

// Without a scene-graph holder, or with one that has no builders yet, the scene stays
// unbuilt and the routes unbound; that counts as success.
ErrorCode ZrXMLParser::BuildScene(const VRML::Group& scene) {
  if (!sceneGraph_) return HALCYON_SUCCESS;
  if (ISGBuilder* builder = sceneGraph_->sceneGraphBuilder(); builder && !builder->build(scene))
    return RaiseRootError(ZRVISUALISATIONXMLREADER_PARSE_NOSCENE);
  if (ISceneMappingBuilder* builder = sceneGraph_->sceneMappingBuilder(); builder && !builder->build(routes_))
    return RaiseRootError(ZRVISUALISATIONXMLREADER_PARSE_NOSCENE);
  return HALCYON_SUCCESS;
}

}  // namespace quillon
