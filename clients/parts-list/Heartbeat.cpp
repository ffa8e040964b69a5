#include "Heartbeat.h"

#include <KtApDocument.h>
#include <KtEd.h>
#include <WindowSystem.h>

#include <string>

namespace parts {

Heartbeat::Heartbeat(KtApDocument& document, DocumentTimer& timer, std::uint32_t milliseconds)
    : document_(document),
      timer_(timer),
      slot_([this] { beat(); }),
      milliseconds_(milliseconds) {
    timer_.attach(slot_.function(), milliseconds_);
}

void Heartbeat::beat() {
    const std::uint32_t ticks = GetTickCount();
    if (beats_ != 0 && ticks - lastTicks_ < milliseconds_) { // unsigned: the counter wraps around
        return;
    }
    lastTicks_ = ticks;
    ++beats_;
    ktedPrint(
        (L"parts " + std::wstring(document_.name()) + L": heartbeat " + std::to_wstring(beats_)).c_str());
}

} // namespace parts
