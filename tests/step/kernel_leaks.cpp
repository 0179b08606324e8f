// What the sanitizers are to pass over: the kernel does not take down all that it puts up. Their
// library looks the function up by its name.

extern "C" __attribute__((visibility("default"))) char const * __lsan_default_suppressions();

extern "C" char const * __lsan_default_suppressions()
{
    return "leak:libTK\n";
}
