// A library with something to export, but not what a host looks for.
extern "C" int somethingElse() {
  return 0;
}
