// An effect module from before there was a version to report.
extern "C" __attribute__((visibility("default"))) int EntryPointFunc() {
  return 0;
}
