#include <zelvan/var/name_table.h>

#include <string>

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
  const auto name_of = [](const VarNameValue* rows, int value, int found) {
    char* name = nullptr;
    EXPECT_EQ(VarLookupString(rows, value, &name), found) << value;
    return std::string(name);
  };
  EXPECT_EQ(name_of(table, 1, 1), "solid") << "the first of two";
  EXPECT_EQ(name_of(table, -1, 1), "dashed");
  EXPECT_EQ(name_of(table, 65535, 0), "Unknown") << "-1 in 16 bits";
  EXPECT_EQ(name_of(table, 9, 0), "Unknown") << "the row that ends the table";
  EXPECT_EQ(name_of(nullptr, 1, 0), "Unknown");
}
