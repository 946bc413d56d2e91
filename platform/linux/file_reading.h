#pragma once

#include <string>

#include "platform/file_system.h"
#include "platform/linux/descriptor.h"

namespace polefit {

/// So many bytes are read or written at once.
inline constexpr std::size_t kChunkSize = 1U << 19U;

/// Error 7, with its reason.
RunTimeError TooLarge();

/// Opens a regular file for reading and never waits: what is none (a folder, a pipe, a device) is
/// error 75, one of more than kLargestFile bytes error 7, a missing one error 53 or 76.
Descriptor OpenRegularFile(const std::string& path);

/// Reads on at `to.size()`, at most `most` bytes, and adds them to `to`; how many there were. None
/// is the end of the file. Throws RunTimeError.
std::size_t ReadOn(const Descriptor& file, std::string& to, std::size_t most);

/// The whole content of a file, as OpenRegularFile opens it. More than `most` bytes are error 7.
std::string WholeFile(const std::string& path, std::size_t most = kLargestFile);

/// At most `most` bytes of a regular file of any size, from `offset` on.
std::string PartOfFile(const std::string& path, std::uint64_t offset, std::size_t most);

}  // namespace polefit
