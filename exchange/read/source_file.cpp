#include "exchange/read/source_file.h"

#include <optional>

#include "exchange/read/decoding.h"
#include "exchange/read/network_file.h"
#include "exchange/read/response_table.h"
#include "platform/paths.h"
#include "responsefile/file_look.h"
#include "responsefile/reader.h"

namespace polefit {

namespace {

SourceFile ReadResponseSource(Host& host, const std::string& path) {
  const ResponseRecord record = ReadResponseFile(host, path);
  SourceFile source;
  source.table = PassbandTable(record);
  source.delays = DelayTable(record);
  if (source.table.Rows() == 0) source.table.fault = "the file has no passband points";
  return source;
}

SourceFile ReadText(const std::string& name, const std::string& text, const TextChoices& choices) {
  SourceFile source;
  if (IsNetworkFile(name, text)) source.table = ReadNetworkFile(name, text);
  const bool isNetwork = source.table.Rows() > 0;
  if (!isNetwork) source.table = ReadDelimited(text, choices, &source.layout);
  return source;
}

}  // namespace

SourceFile ReadSourceBytes(const std::string& name, std::string_view bytes,
                           const TextChoices& choices) {
  SourceFile source;
  const std::optional<std::string> text = DecodedText(bytes);
  if (text) {
    source = ReadText(name, *text, choices);
    source.text = *text;
  } else {
    source.table = NoTable("the file is no text");
  }
  source.name = name;
  return source;
}

SourceFile ReadSourceFile(Host& host, const std::string& path, const TextChoices& choices) {
  const std::string bytes = host.ReadFile(path);
  const std::string name = CutPath(path).name;
  if (!LookAt(bytes).hasFlags) return ReadSourceBytes(name, bytes, choices);
  SourceFile source = ReadResponseSource(host, path);
  source.name = name;
  return source;
}

}  // namespace polefit
