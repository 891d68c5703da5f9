#include <zelvan/var/name_table.h>

#include <string>

#include <gtest/gtest.h>

const VarNameValue table[] = {{"solid", 1}, {"dashed", -1}, {"Solid", 3}, {"dot", 1}, {nullptr, 9}};

TEST(VarLookupInt, ReturnsTheValueOfTheFirstRowOfThatName) {
  const int none = 77;
  const auto value_of = [](const char* name, const VarNameValue* rows = table) {
    int value = none;
    const int is_found = VarLookupInt(rows, name, &value);
    EXPECT_EQ(is_found, value != none) << name;
    return value;
  };
  EXPECT_EQ(value_of("SOLID"), 1) << "the first of two, in any case";
  EXPECT_EQ(value_of("dashed"), -1) << "widened with its sign";
  EXPECT_EQ(value_of("dot\x01tail"), 1) << "a name ends at a control character";
  EXPECT_EQ(value_of(nullptr), none) << "a null name is an empty one";
  EXPECT_EQ(value_of("solid", nullptr), none) << "no table";
}

TEST(VarLookupString, ReturnsTheNameOfTheFirstRowOfThatValue) {
  const auto name_of = [](int value, const VarNameValue* rows = table) {
    char* name = nullptr;
    const bool is_found = VarLookupString(rows, value, &name);
    EXPECT_EQ(is_found, name != std::string("Unknown")) << value;
    return std::string(name);
  };
  EXPECT_EQ(name_of(1), "solid") << "the first of two";
  EXPECT_EQ(name_of(-1), "dashed");
  EXPECT_EQ(name_of(65535), "Unknown") << "-1 in 16 bits";
  EXPECT_EQ(name_of(9), "Unknown") << "the row that ends the table";
  EXPECT_EQ(name_of(1, nullptr), "Unknown") << "no table";
}
