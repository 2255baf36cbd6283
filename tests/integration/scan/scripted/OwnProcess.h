#pragma once

/// What the scripted scanner asks of its platform.
namespace zeltests::scripted {

/// Whether somebody else may take a port that connections of a process that has ended still linger on. Where not, the
/// system gives it without being asked.
extern const bool kAsksForLingeringPort;

unsigned long GetOwnId();
/// Whether the process that started this one has gone.
bool IsStarterGone();
/// Dies by touching memory that is not there, without anybody being asked about it.
[[noreturn]] void Crash();
/// Ends the process here and now.
[[noreturn]] void EndNow(int code);

}  // namespace zeltests::scripted
