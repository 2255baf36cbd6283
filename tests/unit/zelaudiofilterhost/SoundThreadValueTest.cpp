#include <atomic>
#include <memory>
#include <thread>

#include <gtest/gtest.h>
#include <zelaudiofilterhost/SoundThreadValue.h>

namespace zeltests {

namespace {

/// Counts how many of its kind live.
class Counted {
public:
    explicit Counted(int number = 0) : mNumber(number) { ++GetLive(); }
    Counted(Counted&& other) noexcept : mNumber(other.mNumber) { ++GetLive(); }
    ~Counted() { --GetLive(); }
    int GetNumber() const { return mNumber; }

    static std::atomic<int>& GetLive() {
        static std::atomic<int> sLive = 0;
        return sLive;
    }

private:
    int mNumber;
};

typedef zelaudiofilterhost::SoundThreadValue<Counted> Value;

}  // namespace

TEST(SoundThreadValueTest, TheNewestValueIsTaken) {
    Value value;
    EXPECT_EQ(value.Take().GetNumber(), 0);
    value.Publish(Counted(1));
    value.Publish(Counted(2));
    EXPECT_EQ(value.Take().GetNumber(), 2);
    EXPECT_EQ(value.Take().GetNumber(), 2);
}

TEST(SoundThreadValueTest, WhatWasReplacedIsFreedByTheMainThreadOnly) {
    const int live = Counted::GetLive();
    {
        Value value;
        value.Publish(Counted(1));
        value.Take();
        value.Publish(Counted(2));
        const int before = Counted::GetLive();
        value.Take();
        EXPECT_EQ(Counted::GetLive(), before);
    }
    EXPECT_EQ(Counted::GetLive(), live);
}

TEST(SoundThreadValueTest, CollectingFreesWhatWasReplacedAndNothingElse) {
    const int live = Counted::GetLive();
    Value value;
    value.Publish(Counted(1));
    value.Take();
    value.Publish(Counted(2));
    value.Take();
    value.Publish(Counted(3));
    value.Collect();
    EXPECT_EQ(Counted::GetLive(), live + 2);
    EXPECT_EQ(value.Take().GetNumber(), 3);
}

TEST(SoundThreadValueTest, ManyValuesWhileTheSoundThreadRunsComeInOrderAndLeaveNothing) {
    const int live = Counted::GetLive();
    {
        constexpr int kLast = 20000;
        Value value;
        bool isInOrder = true;
        std::thread sound([&] {
            for (int last = 0; last != kLast;) {
                const int number = value.Take().GetNumber();
                isInOrder = isInOrder && number >= last;
                last = number;
            }
        });
        for (int i = 1; i <= kLast; ++i) value.Publish(Counted(i));
        sound.join();
        EXPECT_TRUE(isInOrder);
    }
    EXPECT_EQ(Counted::GetLive(), live);
}

}  // namespace zeltests
