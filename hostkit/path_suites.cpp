#include "hostkit/path_suites.h"

#include "hostkit/callbacks.h"
#include "plugin/sdk/codes.h"

namespace hostkit {

namespace {

const SuiteName kQuerySuite{kPFPathQuerySuite, kPFPathQuerySuiteVersion1};
const SuiteName kDataSuite{kPFPathDataSuite, kPFPathDataSuiteVersion1};

// Calls a function of the current host's masks as a function of the suite.
template <class... Parameters, class... Arguments>
PF_Err callMasks(PF_ProgPtr effectRef, const SuiteName& suite,
                 PF_Err (MaskTable::*function)(Parameters...), Arguments... arguments) {
  HostRecords* host = currentHost(effectRef);
  if (host == nullptr) return PF_Err_INVALID_CALLBACK;
  host->suites.noteCall(suite);
  return (host->masks.*function)(arguments...);
}

PF_Err numPaths(PF_ProgPtr effectRef, A_long* count) {
  return callMasks(effectRef, kQuerySuite, &MaskTable::numPaths, count);
}

PF_Err pathInfo(PF_ProgPtr effectRef, A_long index, PF_PathID* id) {
  return callMasks(effectRef, kQuerySuite, &MaskTable::pathInfo, index, id);
}

PF_Err checkoutPath(PF_ProgPtr effectRef, PF_PathID id, A_long time, A_long step, A_u_long scale,
                    PF_PathOutlinePtr* path) {
  return callMasks(effectRef, kQuerySuite, &MaskTable::checkoutPath, id,
                   MaskTime{time, step, scale}, path);
}

PF_Err checkinPath(PF_ProgPtr effectRef, PF_PathID id, PF_Boolean changed, PF_PathOutlinePtr path) {
  return callMasks(effectRef, kQuerySuite, &MaskTable::checkinPath, id, changed, path);
}

PF_Err pathIsOpen(PF_ProgPtr effectRef, PF_PathOutlinePtr path, PF_Boolean* open) {
  return callMasks(effectRef, kDataSuite, &MaskTable::pathIsOpen, path, open);
}

PF_Err pathNumSegments(PF_ProgPtr effectRef, PF_PathOutlinePtr path, A_long* count) {
  return callMasks(effectRef, kDataSuite, &MaskTable::pathNumSegments, path, count);
}

PF_Err pathVertexInfo(PF_ProgPtr effectRef, PF_PathOutlinePtr path, A_long index,
                      PF_PathVertex* vertex) {
  return callMasks(effectRef, kDataSuite, &MaskTable::pathVertexInfo, path, index, vertex);
}

PF_Err pathIsInverted(PF_ProgPtr effectRef, PF_PathID id, PF_Boolean* inverted) {
  return callMasks(effectRef, kDataSuite, &MaskTable::pathIsInverted, id, inverted);
}

}  // namespace

const PF_PathQuerySuite1& pathQuerySuite() {
  static const PF_PathQuerySuite1 suite{numPaths, pathInfo, checkoutPath, checkinPath};
  return suite;
}

const PF_PathDataSuite1& pathDataSuite() {
  static const PF_PathDataSuite1 suite{pathIsOpen,     pathNumSegments, pathVertexInfo, {},
                                       pathIsInverted, nullptr,         nullptr};
  return suite;
}

}  // namespace hostkit
