/// Shared by the fuzz targets: a reader of the input, and a check that stops the program.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

namespace fuzz {

/// Stops the program if a condition does not hold, and prints the file and line of the call.
inline void require(bool holds, const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
  if (holds) return;
  std::fprintf(stderr, "%s:%d: does not hold\n", file, line);
  std::abort();
}

/// Reads the input from its first byte to its last, then zeros.
class Bytes {
 public:
  Bytes(const std::uint8_t* data, std::size_t size) : data_(data), left_(size) {}

  std::size_t left() const { return left_; }

  std::uint8_t byte() {
    if (left_ == 0) return 0;
    --left_;
    return *data_++;
  }

  /// Returns a number from 0 to `count` - 1.
  int below(int count) { return byte() % count; }

  /// Returns a value of any bits.
  template <class T>
  T any() {
    std::uint8_t raw[sizeof(T)];
    for (std::uint8_t& b : raw) b = byte();
    T value;
    std::memcpy(&value, raw, sizeof value);
    return value;
  }

  /// Returns a small multiple of 1/16. Such numbers often coincide.
  double small() { return static_cast<std::int8_t>(byte()) / 16.0; }

  /// Returns a small number, or one of any bits.
  double number() { return below(4) == 0 ? any<double>() : small(); }

  /// Returns the remaining bytes, up to `most`.
  std::string text(std::size_t most) {
    const std::size_t n = std::min(most, left_);
    std::string taken(reinterpret_cast<const char*>(data_), n);
    data_ += n;
    left_ -= n;
    return taken;
  }

 private:
  const std::uint8_t* data_;
  std::size_t left_;
};

/// A text in a block of exactly its size, including the terminator, so that the address sanitizer
/// detects a byte too many. It ends at the first NUL of `text`.
class ExactText {
 public:
  explicit ExactText(const std::string& text)
      : size_(std::strlen(text.c_str()) + 1), text_(new char[size_]) {
    std::memcpy(text_.get(), text.c_str(), size_);
  }
  char* get() { return text_.get(); }
  std::size_t length() const { return size_ - 1; }

 private:
  std::size_t size_;
  std::unique_ptr<char[]> text_;
};

}  // namespace fuzz
