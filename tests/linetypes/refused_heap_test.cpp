#include <zelvan/linetypes/line_type_list.h>

#include <gtest/gtest.h>
#include <support/heap.h>

namespace {

int count(CLineTypeDefList& list) {
  int found = 0;
  for (unsigned int index = 1; index <= 13; ++index) found += list.GetDefinition(index) != nullptr;
  return found;
}

TEST(CLineTypeDefList, StaysAsItWasWhereACopyFindsNoMemory) {
  const CLineTypeDefList source;
  CLineTypeDefList target;
  const CLineTypeDefinition* const first = target.GetDefinition(1);
  heap::refuse(13, false);
  target = source;
  EXPECT_TRUE(heap::grant_all());
  EXPECT_EQ(target.GetDefinition(1), first);
  EXPECT_EQ(count(target), 13);
  EXPECT_EQ(heap::blocks_left(), 0) << "copies made before the refusal are freed";
  heap::refuse(13, false);
  CLineTypeDefList made = source;
  EXPECT_TRUE(heap::grant_all());
  EXPECT_EQ(count(made), 0) << "a new list is empty";
}

}  // namespace
