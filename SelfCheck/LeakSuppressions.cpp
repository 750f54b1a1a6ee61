// What the leak checker of sanitized builds leaves out: fontconfig keeps its configuration and
// match results for the life of the process, partly on Pango's worker thread, where no scope of
// ours reaches.
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libfontconfig.so\n";
}
