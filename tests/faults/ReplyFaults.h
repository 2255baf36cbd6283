#pragma once

#include <cstddef>
#include <string>

#include "FaultPlan.h"

namespace zelfaults {

/// Stands between the scanner process and its client: what the scanner sends comes through here, a reply at a time. The
/// plan's `at` counts replies from 0.
///   kill N before|half|after   the process ends before, in the middle of, or after that reply
///   delay N MILLISECONDS       every reply from there on comes that much later
///   bytes N -                  every reply from there on comes in single bytes
///   twice N -                  that reply comes twice
///   type N FORM                that reply is something else, of one of kForms forms
///   order N early|late         a reply that is due later, or one that has been, comes in front of it
///   file, memory, handles, space   see FaultPoints; from that reply on, but for "file" and "memory", which count from
///   0
/// It befalls as many processes of a scan as ZEL_FAULT_TIMES says. The file that ZEL_FAULT_LOG names gets a line
/// "<process> start", and for each plug-in that the scanner names "<process> about <locator>" before it and
/// "<process> sent <locator>" behind it.
class ReplyFaults {
public:
    /// How many wrong replies there are to choose from.
    static constexpr unsigned kForms = 12;

    static ReplyFaults& GetInstance();

    /// Sends a reply, or what becomes of it. Returns as the system would for the whole of it.
    long Send(int socket, const std::string& frame, int flags);

private:
    ReplyFaults();

    void Act(int socket, const std::string& frame, int flags);
    void Pass(int socket, const std::string& frame, int flags) const;
    void PassInBytes(int socket, const std::string& frame, int flags) const;
    void Log(const std::string& line) const;
    void BeginFault();
    std::string MakeWrong(const std::string& frame) const;

    FaultPlan mPlan;
    // Open from the start: there may be no descriptor for it later.
    const int mLogFile;
    unsigned long mCount = 0;
};

}  // namespace zelfaults
