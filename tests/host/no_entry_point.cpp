// A library with something to export, but not what a host looks for.
extern "C" [[gnu::visibility("default")]] int SomethingElse() {
  return 0;
}
