// What the sanitizers are to leave alone. Their library looks these functions up by name, in
// whatever executable the kernel is linked with.

extern "C" {

__attribute__((visibility("default"))) char const * __lsan_default_suppressions();
__attribute__((visibility("default"))) char const * __asan_default_options();

/// The kernel does not take down all that it puts up.
char const * __lsan_default_suppressions()
{
    return "leak:libTK\n";
}

/// The translator handles faults by itself, and dies of the others by their signals.
char const * __asan_default_options()
{
    return "handle_segv=0";
}
}
