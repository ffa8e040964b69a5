#pragma once

namespace ktmodel {

/// Access to a private member, for looking only: whoever instantiates a template may name it.
///
///     struct TimerOfBlocks {
///         friend KtDxTimer* KtDxBlocks::*memberOf(TimerOfBlocks);
///     };
///     template struct Reveal<TimerOfBlocks, &KtDxBlocks::timer_>;
///     KtDxTimer* timer = blocks.*memberOf(TimerOfBlocks());
template <class Name, auto kMember>
struct Reveal {
    friend decltype(kMember) memberOf(Name /*name*/) { return kMember; }
};

} // namespace ktmodel
