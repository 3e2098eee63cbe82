// A temporary file without a name in any folder: it is gone when its owner is, however that ends.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "cli/support/file_descriptor.h"

namespace cli {

class NamelessFile {
 public:
  // In the folder for temporary files. Throws WorkError naming it when that does not work.
  NamelessFile();

  // Adds to the end. Throws likewise, when the disk is full for example.
  void append(std::span<const char> bytes);

  // A name under which programs started by this one can open it.
  std::string path() const { return file_.path(); }

 private:
  std::string folder_;
  FileDescriptor file_;
};

}  // namespace cli
