// What the leak checker may pass over: the font library keeps its configuration until the process ends.
extern "C" const char* __lsan_default_suppressions();

extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig\n"; }
