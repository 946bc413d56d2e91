#pragma once

#include <unistd.h>

#include <utility>

namespace polefit {

/// A file descriptor that closes itself; -1 is none.
class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int opened) : number_(opened) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~Descriptor() { Close(); }

  int Number() const { return number_; }
  bool IsOpen() const { return number_ >= 0; }
  /// What the system says to the closing: 0 when all went well.
  int Close() { return number_ < 0 ? 0 : ::close(std::exchange(number_, -1)); }

 private:
  int number_ = -1;
};

}  // namespace polefit
