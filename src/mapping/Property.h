#pragma once
// The counted base of every scene property and the handle that holds one.

#include <utility>

namespace quillon {

/// Base of all properties: one intrusive count that starts at 1 for the creator; the last
/// release deletes the object.
class Property {
 public:
  virtual ~Property() = default;
  /// Adds delta (+1 to take a reference, -1 to give one back) and returns the new count; the
  /// object deletes itself when the count reaches 0.
  virtual int ChangeReference(int delta);

  void AddRef() { ChangeReference(1); }
  void Release() { ChangeReference(-1); }
  int ReferenceCount() const { return count_; }

  Property(const Property&) = delete;
  Property& operator=(const Property&) = delete;

 protected:
  Property() = default;

 private:
  int count_ = 1;
};

/// Holds one reference to a counted property. Whoever keeps a property holds one of these; a
/// property is never handed on as a bare pointer.
template <class T>
class Ref {
 public:
  Ref() = default;
  Ref(const Ref& other) : object_(other.object_) {
    if (object_) object_->AddRef();
  }
  Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  /// A reference to a derived type, shared or moved.
  template <class U>
  Ref(const Ref<U>& other) : object_(other.get()) {
    if (object_) object_->AddRef();
  }
  template <class U>
  Ref(Ref<U>&& other) noexcept : object_(other.Detach()) {}
  Ref& operator=(Ref other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~Ref() {
    if (object_) object_->Release();
  }

  T* get() const { return object_; }
  T* operator->() const { return object_; }
  T& operator*() const { return *object_; }
  explicit operator bool() const { return object_ != nullptr; }

 private:
  template <class U>
  friend class Ref;
  template <class U, class... Args>
  friend Ref<U> MakeRef(Args&&... args);

  /// Takes over the creator's reference of a newly made object.
  explicit Ref(T* created) : object_(created) {}
  T* Detach() { return std::exchange(object_, nullptr); }

  T* object_ = nullptr;
};

/// Makes a property; the handle holds the creator's reference.
template <class T, class... Args>
Ref<T> MakeRef(Args&&... args) {
  return Ref<T>(new T(std::forward<Args>(args)...));
}

}  // namespace quillon
