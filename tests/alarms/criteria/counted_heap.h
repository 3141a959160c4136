#pragma once

namespace quorvane {

// How often the test program has taken memory with operator new so far.
long HeapAllocations();

} // namespace quorvane
