#include <gtest/gtest.h>

#include <regex>
#include <string>

#include "control/ErrorCatalogue.h"
#include "control/QuillonComponent.h"
#include "core/ZrErrorMap.h"

namespace quillon {
namespace {

// A component made of no parts at all still reports the codes of every layer with their texts:
// it registers the catalogue itself. Every message ends with its symbolic name in parentheses,
// and no code is registered twice.
TEST(ErrorCatalogue, AComponentKnowsEveryLayersCodesWordForWord) {
  QuillonComponent component{ComponentParts{}};
  EXPECT_EQ(ZrErrorMap::GetMessage(1290302),
            "QuillonComponent::ConvertErrorTreeForCOM() Error  \n\t (QUILLONCOMPONENT_CONVERTERRORTREEFORCOM)");
  const std::regex name(R"(\([A-Z0-9_]+\)$)");
  std::size_t total = 0;
  for (auto table : ErrorCatalogue()) {
    for (const ErrorDefinition& e : table) {
      ++total;
      EXPECT_TRUE(std::regex_search(std::string(e.message), name)) << e.code << ": " << e.message;
      EXPECT_EQ(ZrErrorMap::GetMessage(e.code), e.message) << e.code;
    }
  }
  EXPECT_EQ(ZrErrorMap::Size(), total);
  RegisterErrorCatalogue();
  EXPECT_EQ(ZrErrorMap::Size(), total);
}

}  // namespace
}  // namespace quillon
