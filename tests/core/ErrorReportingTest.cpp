#include <gtest/gtest.h>

#include <regex>
#include <string>

#include "core/CoreErrorCodes.h"
#include "core/ErrorCatalogue.h"
#include "core/ZrErrorHandler.h"
#include "core/ZrErrorMap.h"

namespace quillon {
namespace {

TEST(ErrorMap, KnownAndUnknownCodes) {
  EXPECT_EQ(ZrErrorMap::GetMessage(HALCYON_SUCCESS), "No Error (HALCYON_SUCCESS)");
  EXPECT_EQ(ZrErrorMap::GetMessage(ZRANYOBJECT_ERROR_NOTIFY),
            "ZrAnyObject::Notify() Error \n\t (ZRANYOBJECT_ERROR_NOTIFY)");
  EXPECT_EQ(ZrErrorMap::GetMessage(1290302),
            "QuillonComponent::ConvertErrorTreeForCOM() Error  \n\t (QUILLONCOMPONENT_CONVERTERRORTREEFORCOM)");
  EXPECT_EQ(ZrErrorMap::GetMessage(3), "Undocumented error code");
  EXPECT_EQ(ZrErrorMap::GetMessage(-1), "Undocumented error code");
  EXPECT_TRUE(ZrErrorMap::IsCoreCode(HALCYON_NOT_IMPLEMENTED));
  EXPECT_TRUE(ZrErrorMap::IsCoreCode(ZRANYOBJECT_ILLEGAL_CLASS_ID));
  EXPECT_FALSE(ZrErrorMap::IsCoreCode(ERRORTREE_MAX_REACHED));
}

// Every registered message ends with its symbolic name in parentheses, and no code is
// registered twice with different texts.
TEST(ErrorMap, EveryMessageEndsWithItsName) {
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
}

TEST(ErrorHandler, TextJoinsEntriesWithTheSectionSign) {
  auto& handler = ZrErrorHandler::Instance();
  handler.Clear();
  EXPECT_EQ(handler.GetErrorText(), "");

  RaiseRootError(ZRANYOBJECT_ERROR_NOTIFY);
  EXPECT_EQ(handler.GetErrorText(), "1001\xA7ZrAnyObject::Notify() Error \n\t (ZRANYOBJECT_ERROR_NOTIFY)");

  handler.SetError(7, "outer");
  EXPECT_EQ(handler.GetErrorText(),
            "1001\xA7ZrAnyObject::Notify() Error \n\t (ZRANYOBJECT_ERROR_NOTIFY)\xA7"
            "7\xA7outer");

  // A new root error starts a new tree.
  handler.SetRootError(5, "root");
  EXPECT_EQ(handler.Count(), 1);
  EXPECT_EQ(handler.GetErrorText(), "5\xA7root");
}

TEST(ErrorHandler, TheHundredthEntryIsTheMaximumReachedEntry) {
  auto& handler = ZrErrorHandler::Instance();
  handler.SetRootError(10, "root");
  for (int i = 1; i < 99; ++i) handler.SetError(10 + i, "entry");
  ASSERT_EQ(handler.Count(), 99);
  EXPECT_EQ(handler.CodeAt(98), 108);

  for (int extra = 0; extra < 3; ++extra) {
    handler.SetError(500, "lost");
    EXPECT_EQ(handler.Count(), ZrErrorHandler::kCapacity);
    EXPECT_EQ(handler.CodeAt(99), ERRORTREE_MAX_REACHED);
    EXPECT_EQ(handler.TextAt(99), "Maximum Number of Error Messages exceeded. (ERRORTREE_MAX_REACHED)");
    EXPECT_EQ(handler.CodeAt(98), 108);
  }
}

}  // namespace
}  // namespace quillon
