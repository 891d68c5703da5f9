/// The field parser with the caller's own record: it parses constant text, on any thread.
///
///     zelvan::field_record record;
///     const str_field* field = zelvan::read_field("line 0.25 \"a b\"", &record);
///     for (; field->type != STR_END; field = zelvan::read_field(field->next, &record)) ...
///
/// Fields are those of `str_parse`, see str_field.h. That function keeps its result in a record of
/// the library: only one thread at a time may parse, and a callee that parses as well overwrites
/// its caller's field. Here each caller brings a record of its own. Nothing is allocated.
///
/// Threads: any number at a time, each with its own record. The C library decides what is blank and
/// what is printable, so the locale of the process must not change meanwhile.
#pragma once

#include <zelvan/export.h>
#include <zelvan/text/str_field.h>

namespace zelvan {

/// One field and its text. The caller owns it and need not initialise it.
struct field_record {
  str_field field;  ///< its `text` points into `text` below
  char text[1600];  ///< of a word, a string or a number, terminated

  /// Makes an uninitialised record.
  field_record() = default;

  /// Deleted: the copy's field would point into the original.
  field_record(const field_record&) = delete;
  field_record& operator=(const field_record&) = delete;
};

/// Rules for strings: what ends one, and where a backslash escapes the next character.
enum class string_rules : int {
  of_str_parse = 0,         ///< `"` and `$` end every string; a backslash escapes in `$` strings
  of_str_parse_mode_1 = 1,  ///< `"` ends every string; a backslash escapes in `$` strings
  of_str_parse_vvcp = 2     ///< `"` ends every string; a backslash escapes in every string
};

/// Reads the next field of `text` into `*record` and returns `&record->field`.
///
/// The result is that of `str_parse`, `str_parseEx` with a mode of 1, or `str_parse_vvcp`, as
/// `rules` say; any other value counts as `of_str_parse`. A null `text` results in `STR_END`. The
/// field's `text` is valid until the record is used again or goes out of scope. Its `next` points
/// into `text`, which is never written.
///
/// Requires: `record` is not null, and no part of `text` lies in it.
ZELVAN_API const str_field* read_field(const char* text, field_record* record,
                                       string_rules rules = string_rules::of_str_parse);

}  // namespace zelvan
