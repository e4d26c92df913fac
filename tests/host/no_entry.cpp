// A module that loads but does not export the plug-in entry point.
extern "C" __attribute__((visibility("default"))) int NotTheEntryPoint() {
  return 1;
}
