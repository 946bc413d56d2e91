#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "platform/file_system.h"

namespace polefit {

/// Takes the lock on the folder at `path`, or on the file of that name, which is made when it is
/// missing and removed before the lock goes. Null when another holds it for as long as `patience`.
/// Throws RunTimeError when there can be no such file, and never follows a link to one.
std::unique_ptr<HeldLock> TakeFileLock(const std::string& path, std::chrono::milliseconds patience);

}  // namespace polefit
