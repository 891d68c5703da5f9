#include "outlines.h"

#include <zelvan/tra/byte_order.h>
#include <zelvan/tra/character_sets.h>
#include <zelvan/tra/foreign_floats.h>

#include "common/error.h"
#include "common/file.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

namespace example {

namespace {

constexpr unsigned short double_precision = 0xB8;
constexpr int ibm_to_ieee = 16;
constexpr std::size_t coordinate_size = sizeof(double);

// Reads the bytes once, from the first to the last.
class Reader {
 public:
  explicit Reader(const std::string& path) : path_(path), bytes_(read_file(path)) {}

  std::vector<Country> read() {
    if (read_text(8) != "OUTLINES") fail(0, "no file of outlines: it does not begin with OUTLINES");
    std::vector<Country> world;
    std::uint32_t left = read_count();
    if (left == 0) fail(8, "the file has no countries");
    for (; left > 0; --left) {
      Country country{read_text(40), {}};
      for (std::uint32_t rings = read_count(); rings > 0; --rings) {
        read_ring();
        add_polygon(country.outline, ring_);
      }
      world.push_back(std::move(country));
    }
    if (at_ != bytes_.size()) fail(at_, "the outlines end here, but the file continues");
    return world;
  }

 private:
  [[noreturn]] void fail(std::size_t place, const std::string& what) const {
    throw Error(path_ + ": at byte " + std::to_string(place) + ": " + what);
  }

  // Returns the next `size` bytes.
  const char* take(std::size_t size) {
    const std::size_t left = bytes_.size() - at_;
    if (size > left) {
      fail(bytes_.size(), "the file ends " + std::to_string(size - left) + " bytes too early");
    }
    at_ += size;
    return bytes_.data() + at_ - size;
  }

  // Returns the next text, without the blanks at its end.
  std::string read_text(unsigned short size) {
    const std::size_t start = at_;
    std::string text(size, '\0');
    tra_convert_charset(TRA_EBCDIC_TO_ASCII, size, take(size), text.data());
    const auto wrong = std::find_if(text.begin(), text.end(), [](char c) { return c < ' '; });
    if (wrong != text.end()) {
      fail(start + static_cast<std::size_t>(wrong - text.begin()),
           "a byte that is no character of EBCDIC text");
    }
    return text.substr(0, text.find_last_not_of(' ') + 1);
  }

  std::uint32_t read_count() {
    std::uint32_t count;
    std::memcpy(&count, take(sizeof count), sizeof count);
    tra_swap_4(&count);
    return count;
  }

  // Reads the next polygon into `ring_`. A count that the file is too short for fails before any
  // memory is allocated.
  void read_ring() {
    const std::size_t start = at_;
    const std::size_t count = read_count();
    if (count < 3) fail(start, "a polygon of " + std::to_string(count) + " vertices");
    const char* from = take(count * 2 * coordinate_size);
    ring_.resize(count);
    char* to = reinterpret_cast<char*>(ring_.data());
    constexpr std::size_t longest = 65535;  // the most numbers that one call converts
    for (std::size_t left = 2 * count; left > 0;) {
      const auto piece = static_cast<unsigned short>(std::min(left, longest));
      tra_convert_flpt(ibm_to_ieee, double_precision, piece, from, to);
      tra_swap_bytes(double_precision, piece, to, to);
      from += piece * coordinate_size;
      to += piece * coordinate_size;
      left -= piece;
    }
    check_ring(start + sizeof(std::uint32_t));
  }

  // Coordinates beyond 1e9 are refused, so that their products can't become infinite; so is a NaN.
  void check_ring(std::size_t start) const {
    constexpr double farthest = 1e9;
    for (std::size_t i = 0; i < ring_.size(); ++i) {
      const std::size_t place = start + 2 * i * coordinate_size;
      if (!(std::abs(ring_[i].x) <= farthest))
        fail(place, "a longitude that is no number or too large");
      if (!(std::abs(ring_[i].y) <= farthest))
        fail(place + coordinate_size, "a latitude that is no number or too large");
    }
  }

  const std::string& path_;
  const std::string bytes_;
  std::size_t at_ = 0;
  std::vector<real_pt_t> ring_;
};

}  // namespace

std::vector<Country> read_outlines(const std::string& path) { return Reader(path).read(); }

std::string shipped_outlines() { return SHIPPED_OUTLINES; }

}  // namespace example
