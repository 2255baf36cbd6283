#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <zelcore/SmallBlockAllocator.h>
#include <zelcore/ustring.h>

using zelcore::utility::SmallBlockAllocator;

TEST(SmallBlockAllocatorTest, BlocksAreAlignedAndDoNotOverlap) {
    struct Block {
        unsigned char* bytes;
        std::size_t size;
        unsigned char mark;
    };
    std::vector<Block> blocks;
    std::mt19937 random(7);
    for (int i = 0; i < 2000; ++i) {
        const std::size_t size = random() % 600;
        Block block{static_cast<unsigned char*>(SmallBlockAllocator::Allocate(size)), size,
                    static_cast<unsigned char>(random())};
        ASSERT_EQ(reinterpret_cast<std::uintptr_t>(block.bytes) % alignof(std::max_align_t), 0u);
        std::memset(block.bytes, block.mark, size);
        blocks.push_back(block);
    }
    for (const Block& block : blocks) {
        for (std::size_t i = 0; i < block.size; ++i) ASSERT_EQ(block.bytes[i], block.mark);
        SmallBlockAllocator::Deallocate(block.bytes, block.size);
    }
}

TEST(SmallBlockAllocatorTest, CountThatOverflowsIsRefused) {
    SmallBlockAllocator::STLAllocator<std::uint64_t> allocator;
    // A volatile keeps the compiler from seeing, and warning about, the size.
    volatile std::size_t count = std::numeric_limits<std::size_t>::max() / 4;
    EXPECT_THROW(static_cast<void>(allocator.allocate(count)), std::bad_alloc);
}

TEST(SmallBlockAllocatorTest, EveryInstanceFreesWhatAnotherAllocated) {
    const SmallBlockAllocator::STLAllocator<char> chars;
    const SmallBlockAllocator::STLAllocator<unsigned short> units(chars);
    EXPECT_TRUE(chars == units);
}

TEST(SmallBlockAllocatorTest, StringsMoveBetweenThreads) {
    std::vector<zelcore::ustring> strings;
    std::thread maker([&] {
        for (unsigned short i = 0; i < 1000; ++i) strings.emplace_back(i % 100u + 1u, i);
    });
    maker.join();
    std::size_t units = 0;
    std::thread taker([&] {
        for (const zelcore::ustring& text : strings) units += text.size();
        strings.clear();
    });
    taker.join();
    EXPECT_EQ(units, 50500u);
    EXPECT_TRUE(strings.empty());
}

TEST(SmallBlockAllocatorTest, TextComparesByUnsignedUnits) {
    EXPECT_LT(zelcore::ustring(1, 0x0041), zelcore::ustring(1, 0xFFFD));
    EXPECT_LT(zelcore::ustring(1, 0x7FFF), zelcore::ustring(1, 0x8000));
}
