#pragma once

#include <cstddef>
#include <string>

#include "FaultPlan.h"

namespace zelfaults {

/// What a program can have happen to itself. Its calls of the system and its allocations go through functions of these
/// names in the program itself, which count them and let one fail, or end the process, when the plan says so.
class FaultPoints {
public:
    /// From now on counts what is done to files of that folder. "file N HOW": the Nth is not done and the process ends
    /// (kill), is done and the process ends (kill-after), is half done and the process ends (kill-half), finds the disk
    /// full from then on (full), the folder not to be written from then on (readonly), or the disk broken once
    /// (broken).
    static void CountFiles(const std::string& folder, const FaultPlan& plan);

    /// From now on counts allocations. "memory N HOW": HOW of them are refused after N.
    static void CountAllocations(const FaultPlan& plan);
    /// How many there were since.
    static unsigned long GetAllocations();

    /// Leaves room for so many more descriptors.
    static void LimitHandles(unsigned long spare);
    /// Leaves room for so many more bytes of memory.
    static void LimitMemory(unsigned long spare);
    /// Lets no file grow beyond that size.
    static void LimitFileSize(unsigned long size);
    /// Takes the privilege that lets an administrator write where nobody may, from this process and from those that it
    /// starts.
    static void GiveUpPrivilege();
    /// Lets nobody write into the folder.
    static void ForbidWriting(const std::string& folder);
    /// Fills the folder's disk but for so many bytes.
    static void FillDisk(const std::string& folder, unsigned long spare);
    /// Ends this process, as a crash or a person would: here and now.
    [[noreturn]] static void Die();
};

}  // namespace zelfaults
