#include <thread>
#include <vector>

#include <boost/intrusive_ptr.hpp>
#include <gtest/gtest.h>
#include <zelcore/RefCountedObject.h>

namespace {

class Counted : public zelcore::utility::RefCountedObject {
public:
    explicit Counted(int& destroyed) : mDestroyed(&destroyed) {}
    ~Counted() override { ++*mDestroyed; }

private:
    int* mDestroyed;
};

typedef boost::intrusive_ptr<Counted> CountedPtr;

}  // namespace

TEST(RefCountedObjectTest, LastPointerDeletes) {
    int destroyed = 0;
    CountedPtr first(new Counted(destroyed));
    EXPECT_EQ(first->GetRefCount(), 1);
    CountedPtr second = first;
    EXPECT_EQ(first->GetRefCount(), 2);
    first.reset();
    EXPECT_EQ(destroyed, 0);
    second.reset();
    EXPECT_EQ(destroyed, 1);
}

TEST(RefCountedObjectTest, CopyIsANewObjectThatNobodyHolds) {
    int destroyed = 0;
    const CountedPtr first(new Counted(destroyed));
    const CountedPtr held = first;
    CountedPtr copy(new Counted(*first));
    EXPECT_EQ(copy->GetRefCount(), 1);
    *copy = *first;
    EXPECT_EQ(copy->GetRefCount(), 1);
    EXPECT_EQ(first->GetRefCount(), 2);
    copy.reset();
    EXPECT_EQ(destroyed, 1);
}

TEST(RefCountedObjectTest, ThreadsShareOneCount) {
    int destroyed = 0;
    {
        const CountedPtr object(new Counted(destroyed));
        std::vector<std::thread> threads;
        for (int i = 0; i < 4; ++i)
            threads.emplace_back([object] {
                for (int round = 0; round < 20000; ++round) const CountedPtr copy = object;
            });
        for (std::thread& thread : threads) thread.join();
        EXPECT_EQ(object->GetRefCount(), 1);
        EXPECT_EQ(destroyed, 0);
    }
    EXPECT_EQ(destroyed, 1);
}
