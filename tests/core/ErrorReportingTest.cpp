#include <gtest/gtest.h>

#include <array>
#include <string>

#include "core/CoreErrorCodes.h"
#include "core/ZrErrorHandler.h"
#include "core/ZrErrorMap.h"

namespace quillon {
namespace {

// Core knows only its own codes until a layer above registers its table. A code keeps the text
// of the first table that names it, and a table registered again adds nothing.
TEST(ErrorMap, KnowsCoreCodesAndTablesAddTheirCodesOnceAndTheFirstTextStays) {
  static constexpr std::array kAbove{
      ErrorDefinition{900002, "Above::Second() Error (ABOVE_SECOND)"},
      ErrorDefinition{900001, "Above::First() Error (ABOVE_FIRST)"},
      ErrorDefinition{HALCYON_SUCCESS, "not core's text (ABOVE_SUCCESS)"},
  };
  static constexpr std::array kLater{ErrorDefinition{900001, "a second text (LATER_FIRST)"}};
  const std::size_t before = ZrErrorMap::Size();
  EXPECT_EQ(before, kCoreErrors.size());
  EXPECT_EQ(ZrErrorMap::GetMessage(ZRANYOBJECT_ERROR_NOTIFY),
            "ZrAnyObject::Notify() Error \n\t (ZRANYOBJECT_ERROR_NOTIFY)");
  for (ErrorCode unknown : {3, -1, 900001}) EXPECT_EQ(ZrErrorMap::GetMessage(unknown), "Undocumented error code");
  EXPECT_TRUE(ZrErrorMap::IsCoreCode(HALCYON_NOT_IMPLEMENTED));
  EXPECT_TRUE(ZrErrorMap::IsCoreCode(ZRANYOBJECT_ILLEGAL_CLASS_ID));
  EXPECT_FALSE(ZrErrorMap::IsCoreCode(ERRORTREE_MAX_REACHED));
  EXPECT_FALSE(ZrErrorMap::IsCoreCode(3));

  ZrErrorMap::Register(kAbove);
  ZrErrorMap::Register(kAbove);
  ZrErrorMap::Register(kLater);
  EXPECT_EQ(ZrErrorMap::Size(), before + 2);
  EXPECT_EQ(ZrErrorMap::GetMessage(900001), "Above::First() Error (ABOVE_FIRST)");
  EXPECT_EQ(ZrErrorMap::GetMessage(900002), "Above::Second() Error (ABOVE_SECOND)");
  EXPECT_EQ(ZrErrorMap::GetMessage(HALCYON_SUCCESS), "No Error (HALCYON_SUCCESS)");
  EXPECT_FALSE(ZrErrorMap::IsCoreCode(900001));
  // A code that no table names is raised with the undocumented text.
  EXPECT_EQ(RaiseRootError(900003), 900003);
  EXPECT_EQ(ZrErrorHandler::Instance().TextAt(0), "Undocumented error code");
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
