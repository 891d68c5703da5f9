#include "common/font.h"

#include <zelvan/osh/paths.h>
#include <zelvan/osh/system_services.h>

#include "common/error.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <string_view>
#include <vector>

#include <cairo-ft.h>
#include <ft2build.h>
#include FT_FREETYPE_H

namespace example {

namespace {

constexpr std::size_t most_suggestions = 4;
constexpr double measured_size = 256.0;  // so large that rounding does not show in a label

struct ReleaseList {
  void operator()(char** list) const { osh_FreeFontFileList(&list); }
};

// FreeType's part of a font. Cairo may keep the font in a cache, and deletes this with it.
struct LoadedFont {
  FT_Library library = nullptr;
  FT_Face face = nullptr;

  ~LoadedFont() { FT_Done_FreeType(library); }  // frees its faces, too
};

// Returns the file's name without its extension: in this list, always a dot and three letters.
std::string stem_of(char* path) {
  std::string directory(path), file(path);
  osh_truncate_path(path, directory.data(), file.data());
  const std::string_view name = file.c_str();
  return std::string(name.substr(0, name.size() - 4));
}

bool equal_in_any_case(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](unsigned char x, unsigned char y) {
    return std::tolower(x) == std::tolower(y);
  });
}

// Returns the first few stems in alphabetical order, and how many more there are.
std::string suggestions(char** list, int count) {
  std::vector<std::string> stems;
  for (int i = 0; i < count; ++i) stems.push_back(stem_of(list[i]));
  std::sort(stems.begin(), stems.end());
  stems.erase(std::unique(stems.begin(), stems.end()), stems.end());
  const std::size_t shown = std::min(most_suggestions, stems.size());
  std::string text;
  for (std::size_t i = 0; i < shown; ++i) text += (i == 0 ? "" : ", ") + stems[i];
  if (stems.size() == shown) return text;
  return text + " and " + std::to_string(stems.size() - shown) + " more";
}

std::string find_font_file(const std::string& name) {
  int count = 0;
  const std::unique_ptr<char*, ReleaseList> list(osh_GetFontFileListCount(&count));
  if (list == nullptr)
    throw Error("--label: this system has no TrueType fonts; install some, such as DejaVu's");
  for (int i = 0; i < count; ++i) {
    if (equal_in_any_case(stem_of(list.get()[i]), name)) return list.get()[i];
  }
  throw Error("--label: no font '" + name + "'; there are " + suggestions(list.get(), count));
}

}  // namespace

Font::Font(const std::string& name) {
  const std::string path = find_font_file(name);
  auto loaded = std::make_unique<LoadedFont>();
  if (FT_Init_FreeType(&loaded->library) != 0 ||
      FT_New_Face(loaded->library, path.c_str(), 0, &loaded->face) != 0) {
    throw Error(path + ": is no font that FreeType can read");
  }
  face_.reset(cairo_ft_font_face_create_for_ft_face(loaded->face, 0));
  static const cairo_user_data_key_t key{};
  cairo_font_face_set_user_data(face_.get(), &key, loaded.get(),
                                [](void* font) { delete static_cast<LoadedFont*>(font); });
  loaded.release();

  cairo_matrix_t size, identity;
  cairo_matrix_init_scale(&size, measured_size, measured_size);
  cairo_matrix_init_identity(&identity);
  cairo_font_options_t* const options = cairo_font_options_create();
  cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
  cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
  measure_.reset(cairo_scaled_font_create(face_.get(), &size, &identity, options));
  cairo_font_options_destroy(options);
}

cairo_text_extents_t Font::extents_of(const std::string& text) const {
  cairo_text_extents_t extents;
  cairo_scaled_font_text_extents(measure_.get(), text.c_str(), &extents);
  return extents;
}

double Font::width_of(const std::string& text) const {
  return extents_of(text).x_advance / measured_size;
}

TextBox Font::box_of(const std::string& text) const {
  const cairo_text_extents_t extents = extents_of(text);
  const double top = -extents.y_bearing / measured_size;  // over the base line
  const double bottom = top - extents.height / measured_size;
  constexpr double middle = capital_height / 2.0;
  return {extents.x_advance / measured_size, top - middle, middle - bottom};
}

}  // namespace example
