// A document through the C interface: what a host gets back for a good and a faulty one.
#include <gtest/gtest.h>

#include <string>

#include "quillon/quillon.h"

namespace {

struct Loaded {
  std::string annotated, groups, errors;
};

// Loads `xml` through InitializeViewer_v1, whose answer is empty by design, even for a failed document.
Loaded Load(std::string xml) {
  QuillonCtrl* ctrl = quillon_create();
  char* document = xml.data();
  char *annotated = nullptr, *groups = nullptr;
  const QuillonBytes result = quillon_InitializeViewer_v1(ctrl, &document, &annotated, &groups);
  EXPECT_EQ(result.data, nullptr);
  EXPECT_EQ(result.size, 0u);
  char* errors = quillon_error_text(ctrl);
  Loaded loaded{annotated ? annotated : "(null)", groups ? groups : "(null)", errors ? errors : "(null)"};
  for (char* text : {annotated, groups, errors}) quillon_free(text);
  quillon_destroy(ctrl);
  return loaded;
}

const std::string kScene =
    "<Scene format='VRML97'>#VRML V2.0 utf8\nDEF Box Transform { children [ Shape { appearance Appearance { "
    "material DEF Mat Material { } } geometry Box { } } ] }</Scene>";

TEST(DocumentThroughCapi, AGoodDocumentGivesItsGroupsAndAFaultyOneIsAnnotatedAndExplained) {
  const Loaded good = Load("<Visualisation><Version>1.0</Version>" + kScene +
                           "<ExternRoute from='Probe[4][0][3D]' to='Box'/><ExternRoute from='Probe[5][1][1D]' "
                           "to='Mat.transparency'/></Visualisation>");
  EXPECT_EQ(good.groups, "[Probe, 4][Probe, 5]");
  EXPECT_EQ(good.annotated, "");

  const Loaded bad = Load("<Visualisation><Version>1.1</Version>" + kScene + "</Visualisation>");
  EXPECT_NE(bad.annotated.find("<!--begin_offending_input--><Version>1.1</Version><!--end_offending_input-->"),
            std::string::npos);
  EXPECT_EQ(bad.errors.rfind("1290826\xA7ZrXMLParser::Parse() Error \n\t Your Visualisation", 0), 0u) << bad.errors;
  EXPECT_NE(bad.errors.find("(ZRVISUALISATIONXMLREADER_PARSE_VERSIONNUMBERNOTSUPPORTED)"), std::string::npos);
}

}  // namespace
