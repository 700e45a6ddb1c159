#include <gtest/gtest.h>

#include <string>

#include "platform/values/dictionary.h"
#include "platform/values/exceptions.h"
#include "platform/values/memory_block.h"

namespace quorvel {
namespace {

constexpr int32_t kDoesNotFit = 2147483647;

std::string All(const MemoryBlock& block) {
  return std::string(block.StringValue(0, block.Size()).Bytes());
}

TEST(MemoryBlock, IntegersInBothByteOrdersWithinTheBlock) {
  MemoryBlock block(6);
  block.LittleEndian(false);
  block.Long(2, -2);
  EXPECT_EQ(All(block), std::string("\0\0\xFF\xFF\xFF\xFE", 6));
  block.LittleEndian(true);
  EXPECT_EQ(block.Long(1), -256);
  for (const int32_t offset : {3, -1, kDoesNotFit}) EXPECT_EQ(block.Long(offset), kDoesNotFit);
  EXPECT_THROW(block.Long(3, 1), OutOfBoundsException);
  EXPECT_THROW(MemoryBlock(-1), OutOfBoundsException);
  EXPECT_EQ(block.StringValue(8, -8).Bytes(), "");
  EXPECT_EQ(block.StringValue(4, kDoesNotFit).Bytes(), "\xFF\xFE");
  EXPECT_THROW(block.StringValue(5, 2, "xy"), OutOfBoundsException);
}

TEST(MemoryBlock, AWriteChangesNoText) {
  const Text text("12345678");
  MemoryBlock block(8);
  block.StringValue(0, 8, text);
  block.StringValue(0, 2, "ab");
  EXPECT_EQ(All(block), "ab345678");
  EXPECT_EQ(text.Bytes(), "12345678");
}

TEST(Dictionary, NumbersKeysInTheOrderOfFirstAssignment) {
  Dictionary senders;
  senders.Value("10.0.0.2", "b");
  senders.Value("10.0.0.1", "a");
  senders.Value("10.0.0.2", "c");
  EXPECT_EQ(senders.Count(), 2);
  EXPECT_EQ(senders.Key(0).Bytes(), "10.0.0.2");
  EXPECT_EQ(senders.Value("10.0.0.2").Bytes(), "c");
  EXPECT_EQ(senders.Lookup("10.0.0.3", "none").Bytes(), "none");
  EXPECT_THROW(static_cast<void>(senders.Value("10.0.0.3")), KeyNotFoundException);
  EXPECT_THROW(static_cast<void>(senders.Key(2)), OutOfBoundsException);
  Dictionary copy = senders;
  senders = Dictionary();
  EXPECT_EQ(copy.Append("10.0.0.1", "b"), 1);
  EXPECT_EQ(copy.Append("10.0.0.3", "d"), 2);
  EXPECT_EQ(copy.Value("10.0.0.1").Bytes(), "ab");
}

}  // namespace
}  // namespace quorvel
