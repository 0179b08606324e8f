#ifndef KELD_TESTS_SUPPORT_SMALL_STACK_H
#define KELD_TESTS_SUPPORT_SMALL_STACK_H

#include <cstddef>
#include <functional>
#include <gtest/gtest.h>
#include <pthread.h>

namespace tests {

/// Runs `body` in a thread with a stack of 512 KB.
inline void onSmallStack(std::function<void()> const & body)
{
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, std::size_t{512} * 1024);
    pthread_t thread;
    auto const run = [](void * call) -> void * {
        (*static_cast<std::function<void()> const *>(call))();
        return nullptr;
    };
    auto call = body;
    ASSERT_EQ(pthread_create(&thread, &attributes, run, &call), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}

} // namespace tests

#endif
