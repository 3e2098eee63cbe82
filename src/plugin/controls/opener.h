// Opening the documentation and the maker's page from the header.
#pragma once

#include <string>

#include "plugin/sdk/in_out_data.h"

namespace brisel {

/// Asks the system, in a thread of its own, to open a full path or a web address above the host's
/// main window. A request is dropped while another one is being served; failure is not reported.
void openBesideHost(const PF_InData& in, std::string target);

}  // namespace brisel
