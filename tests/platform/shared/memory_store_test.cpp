#include "platform/shared/memory_store.h"
#include "tests/contracts/store_contract.h"

namespace quorvane {
namespace {

struct MemoryStoreMaker {
    std::unique_ptr<Store> Open() { return std::make_unique<MemoryStore>(); }
    static std::string Root() { return "Software\\Quorvane test"; }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, StoreContract, MemoryStoreMaker);

} // namespace
} // namespace quorvane
