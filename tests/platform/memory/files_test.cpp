#include "platform/memory/files.h"
#include "tests/contracts/files_contract.h"

namespace quorvane {
namespace {

class MemoryFilesMaker {
  public:
    MemoryFilesMaker() { files_.PutFolder(Root()); }
    Files& Service() { return files_; }
    static std::string Root() { return "/tree"; }

  private:
    MemoryFiles files_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, FilesContract, MemoryFilesMaker);

} // namespace
} // namespace quorvane
