// Calls of the system that fail when told to, once: in a program that is linked with this, or in
// any that is started with the library of it preloaded. There the environment gives the order:
//
//   FAIL_CALL     which: the function's name, or "new"; a list of them with blanks between
//   FAIL_NTH      the how manieth call fails, of those in the list, from the start of main()
//   FAIL_ERROR    with which errno; 0: reads and writes come short by half, and others succeed
//   FAIL_PROGRAM  in this program only, not in those that it starts
//   FAIL_LOG      a file that gets a line when it has happened: the function's name
#pragma once

#include <string>

namespace tests {

/// The order for this program; it replaces one that was not carried out. Only calls that code of
/// the library `within` makes count, at whatever depth in the standard library; its name may be the
/// end of its path. Empty: all calls.
void failCall(const std::string& calls, int nth, int error, const std::string& within);

/// Of pages that were asked for and not given back, by anything but the system's library itself.
std::size_t mappedBytes();

/// Takes the order back; whether it was carried out.
bool endFailing();

}  // namespace tests
