#include <atomic>
#include <thread>

#include <gtest/gtest.h>
#include <zelcore/SimpleMainLoop.h>
#include <zelcore/Utf.h>

#include "DescribeForTest.h"
#include "support/WaitFor.h"
#include "Vst3FilterForTest.h"

using namespace zelaudiofilterhost;
using namespace zeltests;

namespace {

/// The parameter by which ZelChanging3 is made to report from a thread of its own.
constexpr int kReports = 1;

}  // namespace

TEST(Vst3EditHandlerTest, AnEditFromAnotherThreadReachesTheSoundByTheMainThread) {
    zelcore::threads::SimpleMainLoop loop;
    const auto filter = MakeVst3("good/ZelChanging3");
    ASSERT_TRUE(filter->StartProcessing(48000, 8));
    filter->SetParameterValue(0, 0.75f);
    filter->SetParameterValue(kReports, 1.0f);
    EXPECT_EQ(ProcessOnes(*filter), 0.75f);
    loop.RunPending();
    // The block told its gain, which is the older one.
    EXPECT_EQ(filter->GetParameterValue(0), 0.125f);
    EXPECT_EQ(ProcessOnes(*filter), 0.125f);
    EXPECT_EQ(filter->GetParameterValue(0), 0.125f);
    EXPECT_EQ(filter->GetParameterCount(), 5);
}

TEST(Vst3EditHandlerTest, AnEditThatArrivesAfterTheFiltersEndIsDropped) {
    zelcore::threads::SimpleMainLoop loop;
    auto filter = MakeVst3("good/ZelChanging3");
    filter->SetParameterValue(kReports, 1.0f);
    filter.reset();
    loop.RunPending();
    EXPECT_EQ(MakeVst3("good/ZelChanging3")->GetParameterValue(0), 0.0f);
}

TEST(Vst3EditHandlerTest, AnEditThatIsStillPostedWhenTheLoopGoesIsDropped) {
    const auto filter = MakeVst3("good/ZelChanging3");
    {
        const zelcore::threads::SimpleMainLoop loop;
        filter->SetParameterValue(kReports, 1.0f);
    }
    EXPECT_EQ(filter->GetParameterValue(kReports), 1.0f);
}

TEST(Vst3EditHandlerTest, ReportsWhileAnotherThreadProcessesAreHarmless) {
    zelcore::threads::SimpleMainLoop loop;
    const auto filter = MakeVst3("good/ZelChanging3");
    ASSERT_TRUE(filter->StartProcessing(48000, 8));
    std::atomic<bool> ends{false};
    std::atomic<float> heard{1.0f};
    std::thread sound([&] {
        while (!ends) heard = ProcessOnes(*filter);
    });
    for (int i = 0; i < 100; ++i) {
        filter->SetParameterValue(0, static_cast<float>(i % 3) * 0.375f);
        filter->SetParameterValue(kReports, static_cast<float>(i % 2));
        loop.RunPending();
    }
    // The last one that it was moved up reported.
    EXPECT_TRUE(WaitFor([&] { return heard == 0.125f; }));
    ends = true;
    sound.join();
}
