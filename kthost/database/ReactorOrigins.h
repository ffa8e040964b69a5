#pragma once

class KtDbObjectReactor;

/// Where the code of each attached reactor lies, taken down when it is added: a reactor that nobody removed
/// may be gone by the time of an audit and must not be touched. One note for each reactor, however many
/// objects it is on.
namespace kthost {

/// For one more object that the reactor is on.
void noteReactor(const KtDbObjectReactor* reactor);
/// For one object fewer.
void forgetReactor(const KtDbObjectReactor* reactor) noexcept;

/// Address of the table of virtual functions that the reactor had when it was last added; null for one that
/// is on no object.
const void* notedVirtualTable(const KtDbObjectReactor* reactor);

} // namespace kthost
