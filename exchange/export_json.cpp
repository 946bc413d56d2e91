#include "exchange/export_json.h"

#include <complex>
#include <nlohmann/json.hpp>
#include <vector>

namespace polefit {

namespace {

using Json = nlohmann::ordered_json;

Json RootArray(const std::vector<std::complex<double>>& roots, double unit) {
  Json array = Json::array();
  for (const std::complex<double>& root : roots) {
    array.push_back({root.real() * unit, root.imag() * unit});
  }
  return array;
}

Json LocationObject(const ResultLocation& location, double unit) {
  Json object = {{"kind", KindName(location)},
                 {"real", location.real},
                 {"imag", location.imaginary},
                 {"real_rads", location.real * unit},
                 {"imag_rads", location.imaginary * unit},
                 {"Q", nullptr}};
  if (const std::optional<double> quality = PairQuality(location)) object["Q"] = *quality;
  return object;
}

/// One line a member, but one for each element of an array.
std::string Readable(const Json& object) {
  std::string text;
  for (const auto& [name, value] : object.items()) {
    text += (text.empty() ? "{\n " : ",\n ") + Json(name).dump() + ": ";
    if (!value.is_array() || value.empty()) {
      text += value.dump();
      continue;
    }
    const char* separator = "[\n  ";
    for (const Json& element : value) {
      text += separator + element.dump();
      separator = ",\n  ";
    }
    text += "]";
  }
  return text + "\n}\n";
}

}  // namespace

std::string JsonResult(const FilterResult& result) {
  const double unit = result.AngularUnit();
  Json object = {{"zeros", RootArray(ZerosOf(result), unit)},
                 {"poles", RootArray(PolesOf(result), unit)},
                 {"gain", ConstantInRadians(result)},
                 {"unit", "rad/s"},
                 {"freqNormMHz", result.freqNorm},
                 {"file", result.file},
                 {"date", result.date},
                 {"rms", nullptr},
                 {"locations", Json::array()}};
  if (result.rms) object["rms"] = *result.rms;
  for (const ResultLocation& location : result.locations) {
    object["locations"].push_back(LocationObject(location, unit));
  }
  return Readable(object);
}

}  // namespace polefit
