// A document through the C interface: what a host gets back for a good and a faulty one.
#include <gtest/gtest.h>

#include <string>

#include "quillon/quillon.h"

namespace {

struct Loaded {
  explicit Loaded(std::string xml) : ctrl(quillon_create()), text(std::move(xml)) {
    char* document = text.data();
    result = quillon_InitializeViewer_v1(ctrl, &document, &annotated, &groups);
    errors = quillon_error_text(ctrl);
  }
  ~Loaded() {
    quillon_free(result.data);
    quillon_free(annotated);
    quillon_free(groups);
    quillon_free(errors);
    quillon_destroy(ctrl);
  }
  QuillonCtrl* ctrl;
  std::string text;
  QuillonBytes result{};
  char* annotated = nullptr;
  char* groups = nullptr;
  char* errors = nullptr;
};

const std::string kScene =
    "<Scene format='VRML97'>#VRML V2.0 utf8\nDEF Box Transform { children [ Shape { appearance Appearance { "
    "material DEF Mat Material { } } geometry Box { } } ] }</Scene>";

TEST(DocumentThroughCapi, AGoodDocumentGivesItsGroupsAndAFaultyOneIsAnnotatedAndExplained) {
  Loaded good("<Visualisation><Version>1.0</Version>" + kScene +
              "<ExternRoute from='Probe[4][0][3D]' to='Box'/><ExternRoute from='Probe[5][1][1D]' "
              "to='Mat.transparency'/></Visualisation>");
  EXPECT_EQ(good.result.data, nullptr);
  EXPECT_EQ(good.result.size, 0u);
  ASSERT_NE(good.groups, nullptr);
  EXPECT_STREQ(good.groups, "[Probe, 4][Probe, 5]");
  EXPECT_STREQ(good.annotated, "");

  Loaded bad("<Visualisation><Version>1.1</Version>" + kScene + "</Visualisation>");
  EXPECT_EQ(bad.result.data, nullptr);  // empty by design, even for a failed document
  ASSERT_NE(bad.annotated, nullptr);
  EXPECT_NE(std::string(bad.annotated)
                .find("<!--begin_offending_input--><Version>1.1</Version>"
                      "<!--end_offending_input-->"),
            std::string::npos);
  ASSERT_NE(bad.errors, nullptr);
  const std::string errors = bad.errors;
  EXPECT_EQ(errors.rfind("1290826\xA7ZrXMLParser::Parse() Error \n\t Your Visualisation", 0), 0u) << errors;
  EXPECT_NE(errors.find("(ZRVISUALISATIONXMLREADER_PARSE_VERSIONNUMBERNOTSUPPORTED)"), std::string::npos);
}

}  // namespace
