#include "plugin/resources/property_list.h"

#include <string_view>

#include "effect/parameters.h"
#include "plugin/resources/identity.h"

namespace brisel {
namespace {

using Bytes = std::vector<std::uint8_t>;

void append16(Bytes& bytes, std::uint32_t value) {
  bytes.push_back(static_cast<std::uint8_t>(value));
  bytes.push_back(static_cast<std::uint8_t>(value >> 8));
}

void append32(Bytes& bytes, std::uint32_t value) {
  append16(bytes, value & 0xffff);
  append16(bytes, value >> 16);
}

/// A four-character code is a little-endian number, so its characters lie in reverse.
constexpr std::uint32_t code(std::string_view characters) {
  std::uint32_t value = 0;
  for (const char c : characters) value = value << 8 | static_cast<std::uint8_t>(c);
  return value;
}

Bytes number(std::uint32_t value) {
  Bytes bytes;
  append32(bytes, value);
  return bytes;
}

/// Two words, the major number first.
Bytes version(std::uint32_t major, std::uint32_t minor) {
  Bytes bytes;
  append16(bytes, major);
  append16(bytes, minor);
  return bytes;
}

void append(Bytes& bytes, std::string_view text) {
  for (const char c : text) bytes.push_back(static_cast<std::uint8_t>(c));
}

Bytes pascalString(std::string_view text) {
  Bytes bytes;
  bytes.push_back(static_cast<std::uint8_t>(text.size()));
  append(bytes, text);
  return bytes;
}

Bytes zeroTerminated(std::string_view text) {
  Bytes bytes;
  append(bytes, text);
  bytes.push_back(0);
  return bytes;
}

struct Property {
  std::string_view key;
  Bytes data;
};

}  // namespace

std::vector<std::uint8_t> propertyList() {
  const Property properties[] = {
      {"kind", number(code("eFKT"))},
      {"name", pascalString(kDisplayName)},
      {"catg", pascalString(kCategory)},
      {"8664", zeroTerminated(kEntryPointName)},
      {"ePVR", version(2, 0)},
      {"eSVR", version(kSpecVersionMajor, kSpecVersionMinor)},
      {"eVER", number(kEffectVersion)},
      {"eINF", number(0)},
      {"eGLO", number(static_cast<std::uint32_t>(kOutFlags))},
      {"eGL2", number(static_cast<std::uint32_t>(kOutFlags2))},
      {"eMNA", pascalString(kMatchName)},
      {"aeFL", number(0)},
  };
  Bytes list;
  append16(list, 1);  // the layout's version
  append32(list, 0);
  append32(list, static_cast<std::uint32_t>(std::size(properties)));
  for (const Property& property : properties) {
    append32(list, code("8BIM"));
    append32(list, code(property.key));
    append32(list, 0);
    Bytes data = property.data;
    data.resize((data.size() + 3) / 4 * 4);
    append32(list, static_cast<std::uint32_t>(data.size()));
    list.insert(list.end(), data.begin(), data.end());
  }
  return list;
}

}  // namespace brisel
