#pragma once
// Arrays with the fixed bounds of the store. Every access is checked: an index beyond a bound
// throws SubscriptFault naming the array, never reads or writes outside it. Storage is
// allocated once, when the array is made, and never again.
#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>
#include <type_traits>
#include <vector>

#include "store/faults.h"
#include "store/zero_pages.h"

namespace korvan {

namespace detail {

// Storage of the n values of an array, all T{} at the start.
template <class T, bool Numbers = std::is_arithmetic_v<T>>
class Storage {
 public:
  explicit Storage(std::size_t n) : v_(n, T{}) {}
  T& operator[](std::size_t k) { return v_[k]; }
  const T& operator[](std::size_t k) const { return v_[k]; }
  T* data() { return v_.data(); }
  const T* data() const { return v_.data(); }
  std::size_t size() const { return v_.size(); }

 private:
  std::vector<T> v_;
};

// Numbers are zero bytes at the start. A large array of them is mapped from zero pages of the
// system, which become real memory only where they are written: a store whose matrices are
// sized for 390 individuals and 576 days costs what the cohort in hand uses, and making one is
// cheap.
template <class T>
class Storage<T, true> {
  static constexpr std::size_t kMapFrom = 64 * 1024;  // bytes

 public:
  explicit Storage(std::size_t n) : n_(n) { Allocate(); }
  Storage(const Storage& other) : n_(other.n_) {
    Allocate();
    if (Bytes() >= kMapFrom)
      CopyIntoZeroPages(p_, other.p_, Bytes());
    else
      std::memcpy(p_, other.p_, Bytes());
  }
  Storage& operator=(const Storage& other) {
    // Arrays of one type have one size.
    if (this != &other) std::memcpy(p_, other.p_, Bytes());
    return *this;
  }
  ~Storage() {
    if (Bytes() >= kMapFrom)
      UnmapZeroPages(p_, Bytes());
    else
      std::free(p_);
  }
  T& operator[](std::size_t k) { return p_[k]; }
  const T& operator[](std::size_t k) const { return p_[k]; }
  T* data() { return p_; }
  const T* data() const { return p_; }
  std::size_t size() const { return n_; }

 private:
  std::size_t Bytes() const { return n_ * sizeof(T); }
  void Allocate() {
    if (Bytes() >= kMapFrom) {
      p_ = static_cast<T*>(MapZeroPages(Bytes()));
    } else {
      p_ = static_cast<T*>(std::calloc(n_, sizeof(T)));
      if (!p_) throw std::bad_alloc();
    }
  }
  std::size_t n_;
  T* p_ = nullptr;
};

}  // namespace detail

// One dimension, indices Lo..Hi inclusive.
template <class T, long Lo, long Hi>
class Vec {
 public:
  static constexpr long kLo = Lo;
  static constexpr long kHi = Hi;
  explicit Vec(const char* name) : name_(name), v_(static_cast<std::size_t>(Hi - Lo + 1)) {}

  T& operator()(long i) { return v_[index(i)]; }
  const T& operator()(long i) const { return v_[index(i)]; }

  void Fill(const T& value) { std::fill(v_.data(), v_.data() + v_.size(), value); }
  const char* Name() const { return name_; }
  T* Data() { return v_.data(); }
  const T* Data() const { return v_.data(); }

 private:
  std::size_t index(long i) const {
    if (i < Lo || i > Hi) throw SubscriptFault(name_);
    return static_cast<std::size_t>(i - Lo);
  }
  const char* name_;
  detail::Storage<T> v_;
};

// Two dimensions, indices 0..H0 and 0..H1 inclusive, stored row by row.
template <class T, long H0, long H1>
class Mat {
 public:
  static constexpr long kHi0 = H0;
  static constexpr long kHi1 = H1;
  explicit Mat(const char* name) : name_(name), v_(static_cast<std::size_t>((H0 + 1) * (H1 + 1))) {}

  T& operator()(long i, long j) { return v_[index(i, j)]; }
  const T& operator()(long i, long j) const { return v_[index(i, j)]; }

  void Fill(const T& value) { std::fill(v_.data(), v_.data() + v_.size(), value); }
  const char* Name() const { return name_; }

 private:
  std::size_t index(long i, long j) const {
    if (i < 0 || i > H0 || j < 0 || j > H1) throw SubscriptFault(name_);
    return static_cast<std::size_t>(i * (H1 + 1) + j);
  }
  const char* name_;
  detail::Storage<T> v_;
};

// Three dimensions, indices 0..H0, 0..H1 and 0..H2 inclusive.
template <class T, long H0, long H1, long H2>
class Cube {
 public:
  explicit Cube(const char* name)
      : name_(name), v_(static_cast<std::size_t>((H0 + 1) * (H1 + 1) * (H2 + 1))) {}

  T& operator()(long i, long j, long k) { return v_[index(i, j, k)]; }
  const T& operator()(long i, long j, long k) const { return v_[index(i, j, k)]; }

  void Fill(const T& value) { std::fill(v_.data(), v_.data() + v_.size(), value); }
  const char* Name() const { return name_; }

 private:
  std::size_t index(long i, long j, long k) const {
    if (i < 0 || i > H0 || j < 0 || j > H1 || k < 0 || k > H2) throw SubscriptFault(name_);
    return static_cast<std::size_t>((i * (H1 + 1) + j) * (H2 + 1) + k);
  }
  const char* name_;
  detail::Storage<T> v_;  // numbers on zero pages, like Vec and Mat
};

}  // namespace korvan
