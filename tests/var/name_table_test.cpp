#include <zelvan/var/name_table.h>

#include <gtest/gtest.h>

const VarNameValue table[] = {{"solid", 1}, {"dashed", -1}, {"Solid", 3}, {"dot", 1}, {nullptr, 9}};

TEST(VarLookupInt, ReturnsTheValueOfTheFirstRowOfThatName) {
  const struct {
    const char* name;
    int found, value;
    const char* why;
  } rows[] = {
      {"SOLID", 1, 1, "the first of two, in any case"},
      {"dashed", 1, -1, "widened with its sign"},
      {"dot\x01tail", 1, 1, "a name ends at a control character"},
      {"do", 0, 77, "not a beginning of a name"},
      {"dots", 0, 77, "not more than a name"},
      {nullptr, 0, 77, "a null name is an empty one"},
  };
  for (const auto& row : rows) {
    int value = 77;
    EXPECT_EQ(VarLookupInt(table, row.name, &value), row.found) << row.why;
    EXPECT_EQ(value, row.value) << row.why;
  }
  int value = 77;
  EXPECT_EQ(VarLookupInt(nullptr, "solid", &value), 0);
  EXPECT_EQ(value, 77);
}

TEST(VarLookupString, ReturnsTheNameOfTheFirstRowOfThatValue) {
  const struct {
    const VarNameValue* rows;
    int value, found;
    const char* name;
  } rows[] = {
      {table, 1, 1, "solid"},       {table, -1, 1, "dashed"}, {table, 3, 1, "Solid"},
      {table, 65535, 0, "Unknown"}, {table, 9, 0, "Unknown"}, {nullptr, 1, 0, "Unknown"},
  };
  for (const auto& row : rows) {
    char* name = nullptr;
    EXPECT_EQ(VarLookupString(row.rows, row.value, &name), row.found) << row.value;
    EXPECT_STREQ(name, row.name) << row.value;
  }
}
