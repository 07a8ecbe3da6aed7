#include <gtest/gtest.h>

#include "core/CoreErrorCodes.h"
#include "core/ZrAnyObject.h"
#include "core/ZrErrorHandler.h"

namespace quillon {
namespace {

// A small hierarchy: Base (11000) <- Derived (11001); Other (11002) beside them.
template <std::uint16_t Id, typename Parent>
class TestObject : public Parent {
 public:
  static inline const ZrClassRecord record{Id, &Parent::kClassRecord};
  static inline const bool registered = ZrClassRegistry::RegisterClass(&record, Id);
  std::uint16_t GetClassId() const override { return Id; }
  const ZrClassRecord* GetClassRecord() const override { return &record; }
  ErrorCode Update(ZrAnyObject* subject) override {
    lastSubject = subject;
    ++updates;
    return result;
  }
  void AcknowledgeChange(ErrorCode code) override { acknowledged.push_back(code); }

  ZrAnyObject* lastSubject = nullptr;
  int updates = 0;
  ErrorCode result = HALCYON_SUCCESS;
  std::vector<ErrorCode> acknowledged;
};

class Base : public TestObject<11000, ZrAnyObject> {
 public:
  static inline const ZrClassRecord& kClassRecord = record;
};
using Derived = TestObject<11001, Base>;
using Other = TestObject<11002, ZrAnyObject>;

TEST(ZrAnyObject, KindFollowsTheClassRecordsAndAnUnregisteredIdIsIllegal) {
  ASSERT_TRUE(Base::registered && Derived::registered && Other::registered);
  Derived d;
  for (int id : {11001, 11000, int{ZrAnyObject::kClassId}}) EXPECT_TRUE(d.IsKindOf(id)) << id;
  EXPECT_FALSE(d.IsKindOf(11002));
  EXPECT_FALSE(Base().IsKindOf(11001));

  ZrErrorHandler::Instance().Clear();
  EXPECT_FALSE(ZrAnyObject().IsKindOf(14999));
  ASSERT_EQ(ZrErrorHandler::Instance().Count(), 1);
  EXPECT_EQ(ZrErrorHandler::Instance().CodeAt(0), ZRANYOBJECT_ILLEGAL_CLASS_ID);
}

TEST(ZrAnyObject, NotifyStopsAtTheFirstFailingObserver) {
  Other lonely;
  EXPECT_EQ(lonely.Notify(), HALCYON_SUCCESS);  // without observers it still acknowledges
  EXPECT_EQ(lonely.acknowledged.size(), 1u);

  Other subject;
  Base first, second, third;
  second.result = 42;
  subject.Attach(&first);
  subject.Attach(&second);
  subject.Attach(&third);

  ZrErrorHandler::Instance().Clear();
  EXPECT_EQ(subject.Notify(), ZRANYOBJECT_ERROR_NOTIFY);
  EXPECT_EQ(first.updates, 1);
  EXPECT_EQ(first.lastSubject, &subject);
  EXPECT_EQ(second.updates, 1);
  EXPECT_EQ(third.updates, 0);
  EXPECT_TRUE(subject.acknowledged.empty());
  EXPECT_EQ(ZrErrorHandler::Instance().CodeAt(ZrErrorHandler::Instance().Count() - 1), ZRANYOBJECT_ERROR_NOTIFY);

  second.result = HALCYON_SUCCESS;
  EXPECT_EQ(subject.Notify(), HALCYON_SUCCESS);
  EXPECT_EQ(third.updates, 1);
  EXPECT_EQ(subject.acknowledged, std::vector<ErrorCode>{HALCYON_SUCCESS});
}

TEST(ZrAnyObject, DetachVariantsAndCopies) {
  Other subject;
  Base base;
  Derived derived;
  Other other;
  subject.Attach(&base);
  subject.Attach(&derived);
  subject.Attach(&base);
  subject.Attach(&other);

  EXPECT_TRUE(subject.IsAttached(11000));
  subject.Detach(&base);  // both entries go
  EXPECT_EQ(subject.ObserverCount(), 2u);
  EXPECT_FALSE(subject.IsAttached(11000));

  subject.Attach(&base);
  subject.DetachKind(11000);  // Base and Derived alike
  EXPECT_EQ(subject.ObserverCount(), 1u);
  EXPECT_TRUE(subject.IsAttached(11002));

  subject.Attach(&derived);
  subject.DetachClass(11002);  // exactly that class
  EXPECT_EQ(subject.ObserverCount(), 1u);
  EXPECT_TRUE(subject.IsAttached(11001));

  Other copy = subject;  // copies do not share observers
  EXPECT_EQ(copy.ObserverCount(), 0u);
  EXPECT_EQ(ZrAnyObject().CreateObject()->GetClassId(), ZrAnyObject::kClassId);
}

}  // namespace
}  // namespace quillon
