// Writes the property list into the file that the resource script takes it from.
#include <fstream>

#include "plugin/resources/property_list.h"

int main(int argc, char* argv[]) {
  if (argc != 2) return 2;
  std::ofstream file(argv[1], std::ios::binary);
  for (const std::uint8_t byte : brisel::propertyList()) file.put(static_cast<char>(byte));
  return file.flush() ? 0 : 1;
}
