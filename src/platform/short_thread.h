// Work in a thread other than the host's.
#pragma once

namespace brisel {

/// Runs `work` in a thread of its own that nobody waits for; the module stays loaded until it has
/// ended. Returns false, and runs nothing, when the system gives no thread.
bool runInShortThread(void (*work)());

}  // namespace brisel
