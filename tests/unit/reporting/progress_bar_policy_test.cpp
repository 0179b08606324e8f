#include "support/slots.h"

#include <keld-transl/reporting/progress_bar_policy.h>

#include <gtest/gtest.h>
#include <memory>

using cad::IProgressBarPolicy;
using cad::ProgressBarInactive;

TEST(ProgressBarPolicy, InactiveOneDoesNothing)
{
    testing::internal::CaptureStdout();
    std::unique_ptr<IProgressBarPolicy> const bar = std::make_unique<ProgressBarInactive>();
    bar->reset(100);
    bar->progress();
    bar->updateProgress(50);
    bar->incrementBuffer(1);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(ProgressBarPolicy, OperationsStandInOrderBeforeTheDestructor)
{
    using tests::slotOf;
    struct Derived : ProgressBarInactive
    {
        virtual void behind() {}
    };
    EXPECT_EQ(slotOf(&IProgressBarPolicy::progress), 0U);
    EXPECT_EQ(slotOf(&IProgressBarPolicy::reset), 1U);
    EXPECT_EQ(slotOf(&IProgressBarPolicy::updateProgress), 2U);
    EXPECT_EQ(slotOf(&IProgressBarPolicy::incrementBuffer), 3U);
    EXPECT_EQ(slotOf(&Derived::behind), 6U);
}
