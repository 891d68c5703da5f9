/// What the fuzz targets share: a reader of the bytes that they are given, and a check that stops
/// the program.
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

/// Stops the program where something that always holds doesn't, and says where that is.
inline void require(bool holds, const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
  if (holds) return;
  std::fprintf(stderr, "%s:%d: does not hold\n", file, line);
  std::abort();
}

/// Reads the bytes from the first to the last, and zeros after the last.
class Bytes {
 public:
  Bytes(const std::uint8_t* data, std::size_t size) : data_(data), left_(size) {}

  std::size_t left() const { return left_; }

  std::uint8_t byte() {
    if (left_ == 0) return 0;
    --left_;
    return *data_++;
  }

  /// From 0 to `count` - 1.
  int below(int count) { return byte() % count; }

  /// A value of any bits.
  template <class T>
  T any() {
    std::uint8_t raw[sizeof(T)];
    for (std::uint8_t& b : raw) b = byte();
    T value;
    std::memcpy(&value, raw, sizeof value);
    return value;
  }

  /// A multiple of a sixteenth, small: such numbers meet one another all the time.
  double small() { return static_cast<std::int8_t>(byte()) / 16.0; }

  /// A small number, or one of any bits.
  double number() { return below(4) == 0 ? any<double>() : small(); }

  /// As many bytes as there are, up to `most`.
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

/// A text in a block of just its size, terminator included, so that the address sanitizer sees a
/// byte too many. It ends at the first NUL of `text`.
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
