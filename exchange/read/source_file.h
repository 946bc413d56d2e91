#pragma once

#include <string>

#include "exchange/read/delimited.h"
#include "exchange/read/table.h"
#include "platform/host.h"

namespace polefit {

/// A file of points as it was read. What could not be understood stands in `table.fault`.
struct SourceFile {
  /// The bare name.
  std::string name;
  SourceTable table;
  /// The delay points of a Response Input File, which have frequencies of their own.
  SourceTable delays;
  /// How a delimited text was read.
  TextLayout layout;
  /// The text of the file, by whose lines the table counts; "" for a Response Input File.
  std::string text;
};

/// Reads the file at `path`: network parameters, a Response Input File, or delimited text. Throws
/// RunTimeError when it cannot be read to its end.
SourceFile ReadSourceFile(Host& host, const std::string& path, const TextChoices& choices = {});

/// The same for bytes at hand, named `name`, that are no Response Input File.
SourceFile ReadSourceBytes(const std::string& name, std::string_view bytes,
                           const TextChoices& choices = {});

}  // namespace polefit
