#include "core/ZrAnyObject.h"

#include "core/CoreErrorCodes.h"
#include "core/ZrErrorHandler.h"

namespace quillon {

const ZrClassRecord ZrAnyObject::kClassRecord{ZrAnyObject::kClassId, nullptr};

namespace {
[[maybe_unused]] const bool registered =
    ZrClassRegistry::RegisterClass(&ZrAnyObject::kClassRecord, ZrAnyObject::kClassId);
}

ZrAnyObject::~ZrAnyObject() = default;

void ZrAnyObject::Attach(ZrAnyObject* observer) {
  if (observer) observers_.push_back(observer);
}

void ZrAnyObject::DetachClass(std::uint16_t classId) {
  observers_.remove_if([classId](ZrAnyObject* o) { return o->GetClassId() == classId; });
}

void ZrAnyObject::Detach(ZrAnyObject* observer) { observers_.remove(observer); }

ErrorCode ZrAnyObject::Notify() {
  // A copy, so that an observer may detach itself while it is told.
  const std::list<ZrAnyObject*> observers = observers_;
  for (ZrAnyObject* observer : observers) {
    if (observer->Update(this) != HALCYON_SUCCESS) return RaiseError(ZRANYOBJECT_ERROR_NOTIFY);
  }
  AcknowledgeChange(HALCYON_SUCCESS);
  return HALCYON_SUCCESS;
}

ErrorCode ZrAnyObject::Validate() const { return HALCYON_SUCCESS; }

void ZrAnyObject::AcknowledgeChange(ErrorCode) {}

bool ZrAnyObject::IsAttached(std::uint16_t classId) const {
  for (const ZrAnyObject* o : observers_)
    if (o->GetClassId() == classId) return true;
  return false;
}

void ZrAnyObject::DetachKind(std::uint16_t classId) {
  observers_.remove_if([classId](ZrAnyObject* o) { return DerivesFrom(o->GetClassRecord(), classId); });
}

ErrorCode ZrAnyObject::Update(ZrAnyObject*) { return HALCYON_SUCCESS; }

std::uint16_t ZrAnyObject::GetClassId() const { return kClassId; }

const ZrClassRecord* ZrAnyObject::GetClassRecord() const { return &kClassRecord; }

std::unique_ptr<ZrAnyObject> ZrAnyObject::CreateObject() const { return std::make_unique<ZrAnyObject>(); }

bool ZrAnyObject::IsKindOf(std::uint16_t classId) const {
  if (!ZrClassRegistry::Find(classId)) {
    RaiseRootError(ZRANYOBJECT_ILLEGAL_CLASS_ID);
    return false;
  }
  return DerivesFrom(GetClassRecord(), classId);
}

bool ZrAnyObject::DerivesFrom(const ZrClassRecord* record, std::uint16_t classId) {
  // The walk ends at the root class 10 (or at a record without base); a cycle cannot run on.
  for (int depth = 0; record && depth < ZrClassRegistry::kSlots; ++depth, record = record->base) {
    if (record->classId == classId) return true;
    if (record->classId == ZrAnyObject::kClassId) break;
  }
  return false;
}

}  // namespace quillon
