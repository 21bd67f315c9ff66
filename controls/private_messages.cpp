#include "controls/private_messages.h"

#include <atomic>

namespace varion {
namespace {
std::atomic<unsigned> g_messageBase{kDefaultAppMessageBase};
}

unsigned GetAppMessageBase() { return g_messageBase.load(std::memory_order_relaxed); }
void SetAppMessageBase(unsigned base) { g_messageBase.store(base, std::memory_order_relaxed); }

}  // namespace varion
