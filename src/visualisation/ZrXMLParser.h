#pragma once
// The reader and validator of visualisation documents.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "channels/FltMatrix.h"
#include "visualisation/CMarkupSTL.h"
#include "visualisation/IDocumentParser.h"
#include "visualisation/RouteRecord.h"

namespace VRML {
class Group;
}

namespace quillon {

class ISceneGraphImplementor;

/// Checks a visualisation document element by element, collects its settings and external
/// routes, reads its VRML97 scene, has the scene graph and the scene mappings built, and
/// registers the mappings. The first fault ends the parse; most faults hand back the document
/// with the offending element bracketed by "begin_offending_input" and "end_offending_input"
/// comments.
class ZrXMLParser final : public IDocumentParser {
 public:
  /// The holder may be null, or lack builders: the scene is then read but not built.
  explicit ZrXMLParser(ISceneGraphImplementor* sceneGraph = nullptr);
  ~ZrXMLParser() override;

  ErrorCode Parse(IMappingRegistrar& registrar, std::string_view xmlDescription, std::string* annotated,
                  std::string* neededChannelGroups) override;

  // What the last parse collected.
  const std::string& Label() const { return label_; }
  bool RenderInvalidsHide() const { return hide_; }
  const FltMatrix& DefaultColourMap() const { return colourMap_; }
  const FltMatrix& DefaultInvalidColour() const { return invalidColour_; }
  /// The routes in document order; their mappings have been handed to the registrar.
  const std::vector<RouteRecord>& Routes() const { return routes_; }

  /// The built-in blue-to-red map of nine colours.
  static FltMatrix BuiltInColourMap();

 private:
  ErrorCode Annotate(ErrorCode code, std::string_view elementName, std::string* annotated);
  ErrorCode ReadSettings(std::string* annotated);
  ErrorCode ReadColourMap(std::string_view elementName, bool oneRow, ErrorCode multipleCode, FltMatrix& matrix,
                          std::string* annotated);
  ErrorCode ReadRoute(std::string_view elementName, std::string* annotated, std::string* neededChannelGroups);
  ErrorCode BuildScene(const VRML::Group& scene);

  ISceneGraphImplementor* sceneGraph_;
  const std::string supportedVersion_ = "1.0";
  CMarkupSTL markup_;
  std::string label_;
  bool hide_ = true;
  FltMatrix colourMap_;
  FltMatrix invalidColour_;
  std::vector<RouteRecord> routes_;
};

}  // namespace quillon
