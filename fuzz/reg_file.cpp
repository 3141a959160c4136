// Any bytes as a registry text file: refused with a line number, or taken; and what was taken is written and
// read back the same.
#include "config/reg_file.h"
#include "config/schema.h"
#include "platform/shared/memory_store.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quorvane;
    MemoryStore store;
    try {
        ImportRegFile({reinterpret_cast<const char*>(data), size}, store, RegScope::Program);
    } catch (const RegFileError&) {
        return 0;
    }
    const std::string written = ExportRegFile(store, RootKey, RegEncoding::Utf16);
    MemoryStore again;
    ImportRegFile(written, again, RegScope::Program);
    if (ExportRegFile(again, RootKey, RegEncoding::Utf16) != written) std::abort();
    return 0;
}
