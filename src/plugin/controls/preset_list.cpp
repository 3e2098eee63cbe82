#include "plugin/controls/preset_list.h"

#include <utility>

namespace brisel {

PresetList readPresetList(const PresetFolders& folders, const char* section) {
  PresetList list;
  for (PresetFiles& files : ReadPresetIndex(folders, section)) {
    BmpImage thumbnail;
    if (!files.thumbnail.empty()) thumbnail = LoadBmpFile(files.thumbnail.c_str());
    list.items.push_back({std::move(files.parameters), std::move(thumbnail)});
  }
  return list;
}

}  // namespace brisel
