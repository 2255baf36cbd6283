#include <string>

#include <boost/bind/bind.hpp>
#include <gtest/gtest.h>
#include <zelcore/Signals.h>

namespace {

class Listener : public boost::signals::trackable {
public:
    explicit Listener(int& calls) : mCalls(&calls) {}
    void OnChanged(int by) { *mCalls += by; }

private:
    int* mCalls;
};

}  // namespace

TEST(SignalsTest, SlotsRunInTheOrderOfConnection) {
    boost::signal<void()> changed;
    std::string order;
    changed.connect([&] { order += 'a'; });
    changed.connect([&] { order += 'b'; });
    changed();
    EXPECT_EQ(order, "ab");
}

TEST(SignalsTest, SignalWithoutSlotsIsQuiet) {
    boost::signal<void(int)> changed;
    EXPECT_TRUE(changed.empty());
    changed(1);
    EXPECT_EQ(changed.num_slots(), 0u);
}

TEST(SignalsTest, ScopedConnectionEndsWithItsOwner) {
    boost::signal<void()> changed;
    int calls = 0;
    {
        const boost::signals::scoped_connection connection(changed.connect([&] { ++calls; }));
        changed();
        EXPECT_TRUE(connection.connected());
    }
    changed();
    EXPECT_EQ(calls, 1);
}

TEST(SignalsTest, AssigningAScopedConnectionEndsTheOneBefore) {
    boost::signal<void()> changed;
    int first = 0;
    int second = 0;
    boost::signals::scoped_connection connection(changed.connect([&] { ++first; }));
    connection = changed.connect([&] { ++second; });
    changed();
    EXPECT_EQ(first, 0);
    EXPECT_EQ(second, 1);
}

TEST(SignalsTest, ScopedConnectionMayOutliveTheSignal) {
    boost::signals::scoped_connection connection;
    {
        boost::signal<void()> changed;
        connection = changed.connect([] {});
        EXPECT_TRUE(connection.connected());
    }
    EXPECT_FALSE(connection.connected());
}

TEST(SignalsTest, TrackableListenerIsDisconnectedWhenItGoes) {
    boost::signal<void(int)> changed;
    int calls = 0;
    {
        Listener listener(calls);
        changed.connect(boost::bind(&Listener::OnChanged, &listener, boost::placeholders::_1));
        changed(2);
    }
    changed(40);
    EXPECT_EQ(calls, 2);
    EXPECT_TRUE(changed.empty());
}

TEST(SignalsTest, SlotMayDisconnectItselfWhileItIsCalled) {
    boost::signal<void()> changed;
    int once = 0;
    int always = 0;
    boost::signals::connection connection;
    connection = changed.connect([&] {
        ++once;
        connection.disconnect();
    });
    changed.connect([&] { ++always; });
    changed();
    changed();
    EXPECT_EQ(once, 1);
    EXPECT_EQ(always, 2);
}

TEST(SignalsTest, SlotDisconnectedByAnEarlierOneIsNotCalled) {
    boost::signal<void()> changed;
    int calls = 0;
    boost::signals::connection later;
    changed.connect([&] { later.disconnect(); });
    later = changed.connect([&] { ++calls; });
    changed();
    EXPECT_EQ(calls, 0);
}

TEST(SignalsTest, SlotConnectedWhileCallingWaitsForTheNextCall) {
    boost::signal<void()> changed;
    int late = 0;
    boost::signals::scoped_connection connection(changed.connect([&] {
        if (changed.num_slots() == 1) changed.connect([&] { ++late; });
    }));
    changed();
    EXPECT_EQ(late, 0);
    changed();
    EXPECT_EQ(late, 1);
}

TEST(SignalsTest, SlotMayEmitTheSignalAgain) {
    boost::signal<void(int)> changed;
    int deepest = 0;
    changed.connect([&](int depth) {
        deepest = depth;
        if (depth < 3) changed(depth + 1);
    });
    changed(1);
    EXPECT_EQ(deepest, 3);
}
