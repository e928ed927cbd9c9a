// Weak references: callbacks that point into controls and windows hold one and do nothing once the target is gone.
//
// The control block is counted with interlocked operations, since any owner may let go of it last; making, asking and
// destroying the target happen on the UI thread.
#pragma once

#include <windows.h>

#include <utility>

namespace lumo {

// Shared by an object and everybody who refers to it weakly.
class LivenessBlock {
 public:
  bool IsAlive() const { return alive_; }
  void MarkDead() { alive_ = false; }
  void AddReference() { InterlockedIncrement(&references_); }
  void Release() {
    if (InterlockedDecrement(&references_) == 0) delete this;
  }

 private:
  ~LivenessBlock() = default;

  LONG references_ = 1;
  bool alive_ = true;
};

// Base of everything that is referred to weakly. The block is made with the first reference.
class WeakBase {
 public:
  WeakBase() = default;
  WeakBase(const WeakBase&) = delete;
  WeakBase& operator=(const WeakBase&) = delete;

  // The caller gets a reference of its own, to be released.
  LivenessBlock* ShareLiveness() {
    if (!block_) block_ = new LivenessBlock;
    block_->AddReference();
    return block_;
  }

 protected:
  virtual ~WeakBase() {
    if (!block_) return;
    block_->MarkDead();
    block_->Release();
  }

 private:
  LivenessBlock* block_ = nullptr;
};

// Refers to a T without keeping it. Get() is null once the target is destroyed (from the end of ~T's most derived
// part's base WeakBase on; a T that is being destroyed must not be asked).
template <class T>
class WeakRef {
 public:
  WeakRef() = default;
  explicit WeakRef(T* target) : target_(target), block_(target ? target->ShareLiveness() : nullptr) {}
  WeakRef(const WeakRef& other) : target_(other.target_), block_(other.block_) {
    if (block_) block_->AddReference();
  }
  WeakRef(WeakRef&& other) noexcept
      : target_(std::exchange(other.target_, nullptr)), block_(std::exchange(other.block_, nullptr)) {}
  WeakRef& operator=(WeakRef other) noexcept {
    std::swap(target_, other.target_);
    std::swap(block_, other.block_);
    return *this;
  }
  ~WeakRef() {
    if (block_) block_->Release();
  }

  T* Get() const { return block_ && block_->IsAlive() ? target_ : nullptr; }
  explicit operator bool() const { return Get() != nullptr; }

 private:
  T* target_ = nullptr;
  LivenessBlock* block_ = nullptr;
};

}  // namespace lumo
