#pragma once

#include <chrono>
#include <cstdio>
#include <functional>

class QByteArray;

namespace quorvane {

// What `work` writes, done in a process of its own, as the libraries that read metafiles trust their input:
// their accidents stay there, and so does what they use. Empty where it fails, ends too late, or writes,
// takes or reckons too much.
QByteArray OutputOfChild(const std::function<bool(std::FILE*)>& work, std::chrono::milliseconds limit);

} // namespace quorvane
