#include "engine/listed_files.h"

#include "core/text.h"

namespace quorvane {
namespace {

ListedFile* FindFile(OneBased<ListedFile>& list, const std::string& path) {
    for (ListedFile& file : list) {
        if (SameName(file.Path, path)) return &file;
    }
    return nullptr;
}

} // namespace

void ListFile(OneBased<ListedFile>& list, const std::string& path) {
    if (ListedFile* listed = FindFile(list, path)) {
        listed->Active = true;
    } else if (!Trim(path).empty()) { // there is one to add
        list.Add({path, true});
    }
}

bool SwitchOffFile(OneBased<ListedFile>& list, const std::string& path) {
    ListedFile* listed = FindFile(list, path);
    if (listed) listed->Active = false;
    return listed != nullptr;
}

} // namespace quorvane
