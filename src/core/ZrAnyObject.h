#pragma once
// Base of the core data classes: a class identifier, a kind test and a list of observers.

#include <cstdint>
#include <list>
#include <memory>

#include "core/ErrorDefinition.h"
#include "core/ZrClassRegistry.h"

namespace quillon {

/// An object that knows its registered class and tells its observers when it changes.
/// Observers are not owned; an observer must be detached before it is destroyed.
class ZrAnyObject {
 public:
  static constexpr std::uint16_t kClassId = 10;

  ZrAnyObject() = default;
  ZrAnyObject(const ZrAnyObject&) : observers_() {}  // observers stay with the original
  ZrAnyObject& operator=(const ZrAnyObject&) { return *this; }

  virtual ~ZrAnyObject();
  virtual void Attach(ZrAnyObject* observer);
  /// Removes every observer whose class identifier equals classId.
  virtual void DetachClass(std::uint16_t classId);
  /// Removes every entry that points to the observer.
  virtual void Detach(ZrAnyObject* observer);
  /// Calls Update(this) on each observer; the first failure stops the walk with 1001.
  virtual ErrorCode Notify();
  /// Checks the object's own invariants; 0 when it is usable.
  virtual ErrorCode Validate() const;
  /// Called by a successful Notify with 0.
  virtual void AcknowledgeChange(ErrorCode result);
  /// True when an observer of exactly that class identifier is attached.
  virtual bool IsAttached(std::uint16_t classId) const;
  /// Detaches every observer whose class is classId or derives from it.
  virtual void DetachKind(std::uint16_t classId);
  /// Called on an observer by its subject's Notify; 0 on success.
  virtual ErrorCode Update(ZrAnyObject* subject);
  virtual std::uint16_t GetClassId() const;
  virtual const ZrClassRecord* GetClassRecord() const;
  virtual std::unique_ptr<ZrAnyObject> CreateObject() const;

  /// True when the object's class or one of its bases has that identifier; an identifier
  /// that no class registered raises ZRANYOBJECT_ILLEGAL_CLASS_ID.
  bool IsKindOf(std::uint16_t classId) const;

  std::size_t ObserverCount() const { return observers_.size(); }

  static const ZrClassRecord kClassRecord;

 private:
  static bool DerivesFrom(const ZrClassRecord* record, std::uint16_t classId);

  std::list<ZrAnyObject*> observers_;
};

}  // namespace quillon
