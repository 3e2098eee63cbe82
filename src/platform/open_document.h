// Opening a document or a web page with the system's own program for it.
#pragma once

namespace brisel {

/// Asks the system to open `target`, a full path or a web address, and returns when the system has
/// taken or refused it; the result is not reported. `parentWindow` is the host's main window or
/// null.
void openDocument(const char* target, void* parentWindow);

}  // namespace brisel
