#pragma once

#include <memory>
#include <string>

namespace zelbench {

/// The least that two threads can do to send `ping` one way and `pong` the other over loopback: both know the sizes, so
/// nothing is parsed or allocated on the way. What the remote calls are measured against.
class BarePingPong {
public:
    BarePingPong(const std::string& ping, const std::string& pong);
    ~BarePingPong();
    /// Goes there and back `count` times, one after the other.
    void Run(int count);

private:
    class Impl;
    std::unique_ptr<Impl> mImpl;
};

}  // namespace zelbench
