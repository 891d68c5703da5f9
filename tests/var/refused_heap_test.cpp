#include <zelvan/var/name_list.h>

#include <gtest/gtest.h>
#include <support/heap.h>

TEST(VarNameList, StaysAsItWasWhereTheHeapRefuses) {
  VarNameInfo* list = nullptr;
  VarAddNameInfo(&list, "a", nullptr);
  char* stored = list->name;
  const auto expect_unchanged = [&] {
    EXPECT_EQ(stored, nullptr) << "the operation reports the refusal";
    EXPECT_STREQ(list->name, "a");
    EXPECT_EQ(list->next, nullptr);
    EXPECT_EQ(heap::blocks_left(), 0) << "nothing leaks";
  };
  // Requests heap blocks for a node and its name. Each is refused alone, then with all later ones.
  const auto add = [&] {
    stored = VarAddNameInfo(&list, "b", nullptr);
    VarDeleteNameInfo(&list, "b");
  };
  EXPECT_EQ(heap::refuse_each(add, expect_unchanged), 4);
  const auto rename = [&] { stored = VarReplaceNameInfo(list, "a", "a"); };
  EXPECT_EQ(heap::refuse_each(rename, expect_unchanged), 2);
  VarDeleteNameInfo(&list, "a");
}
