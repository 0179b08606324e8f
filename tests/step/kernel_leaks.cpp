// What the sanitizers are to pass over: the kernel does not take down all that it puts up.

extern "C" char const * __lsan_default_suppressions();

extern "C" char const * __lsan_default_suppressions()
{
    return "leak:libTK\n";
}
