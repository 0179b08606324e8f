// Places of components in exported assemblies: those that only move and turn, and all others.
#include "step/export_fixture.h"
#include "step/kernel_reading.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;
using testing::UnorderedElementsAre;
using tests::addInstance;
using tests::Completed;
using tests::Identity;
using tests::KernelReading;
using tests::Matrix;
using tests::SentModel;
using transl_tk::Assembly;
using transl_tk::Part;

constexpr Matrix MirrorInX = {-1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 100, 0, 0, 1};
constexpr Matrix TwiceAsLarge = {2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 100, 0, 0, 1};
constexpr Matrix TwiceAsLong = {2, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 100, 0, 0, 1};
constexpr Matrix Flat = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1};

class StepPlaces : public tests::ExportFixture
{};

TEST_F(StepPlaces, AMirroredPlaceIsAMirroredProductOfItsOwn)
{
    TopoDS_Shape const shape = tests::coneWithHyperbola();
    SentModel const sent = sendWith(shape, [](Part & part) {
        Assembly * const both = Assembly::create(0, "both");
        addInstance(*both, part, Identity);
        addInstance(*both, part, MirrorInX);
    });
    ASSERT_EQ(Completed, sent.status()) << sent.log();
    EXPECT_THAT(sent.log(),
                HasSubstr("The product \"shape\" also stands mirrored, which no place can say: it "
                          "is written a second time, as \"shape (mirrored)\"."));
    EXPECT_THAT(sent.log(), HasSubstr("Part: 1 mirrored copy as a product of its own"));

    KernelReading const written = tests::readByKernel(target());
    EXPECT_THAT(written.productNames, UnorderedElementsAre("both", "shape", "shape (mirrored)"));
    tests::Measures const one = tests::measuresOf(shape);
    EXPECT_NEAR(2 * one.volume, written.measures.volume, 2e-6 * one.volume);
    // What stands at x goes to 100 - x.
    EXPECT_NEAR(50, written.measures.centre.X(), 1e-4);
    EXPECT_NEAR(one.centre.Y(), written.measures.centre.Y(), 1e-4);
    EXPECT_NEAR(one.centre.Z(), written.measures.centre.Z(), 1e-4);
}

TEST_F(StepPlaces, WhatIsMirroredTwiceIsNotMirrored)
{
    SentModel const sent = sendWith(tests::seamedCylinder(), [](Part & part) {
        Assembly * const inner = Assembly::create(0, "inner");
        addInstance(*inner, part, MirrorInX);
        Assembly * const outer = Assembly::create(0, "outer");
        addInstance(*outer, *inner, MirrorInX);
    });
    ASSERT_EQ(Completed, sent.status()) << sent.log();
    KernelReading const written = tests::readByKernel(target());
    EXPECT_THAT(written.productNames, UnorderedElementsAre("outer", "inner (mirrored)", "shape"));
    EXPECT_NEAR(0, written.measures.centre.X(), 1e-6);
}

TEST_F(StepPlaces, AScaledPlaceIsAScaledProductOfItsOwn)
{
    TopoDS_Shape const shape = tests::torus();
    SentModel const sent = sendWith(
        shape, [](Part & part) { addInstance(*Assembly::create(0, "top"), part, TwiceAsLarge); });
    ASSERT_EQ(Completed, sent.status()) << sent.log();
    double const volume = tests::measuresOf(shape).volume;
    KernelReading const written = tests::readByKernel(target());
    EXPECT_NEAR(8 * volume, written.measures.volume, 8e-6 * volume);
    EXPECT_THAT(written.productNames, UnorderedElementsAre("top", "shape (scaled)"));
}

TEST_F(StepPlaces, ADistortedPlaceIsADistortedProductOfItsOwn)
{
    SentModel const sent = sendWith(tests::boxWithVoid(), [](Part & part) {
        addInstance(*Assembly::create(0, "top"), part, TwiceAsLong);
    });
    ASSERT_EQ(Completed, sent.status()) << sent.log();
    KernelReading const written = tests::readByKernel(target());
    EXPECT_NEAR(2 * (6000 - 64), written.measures.volume, 1e-2);
    EXPECT_THAT(written.productNames, UnorderedElementsAre("top", "shape (distorted)"));
}

TEST_F(StepPlaces, APlaceThatFlattensIsLost)
{
    SentModel const sent = sendWith(tests::torus(), [](Part & part) {
        Assembly * const top = Assembly::create(0, "top");
        addInstance(*top, part, Flat);
        addInstance(*top, part, Identity);
    });
    ASSERT_EQ(Completed, sent.status()) << sent.log();
    EXPECT_THAT(sent.log(), HasSubstr("its transform flattens its component, or is not finite"));
    EXPECT_THAT(sent.log(), HasSubstr("1 entities were lost."));
}

TEST_F(StepPlaces, AnAssemblyWithinItselfIsLost)
{
    SentModel const sent = sendWith(tests::torus(), [](Part & part) {
        Assembly * const inner = Assembly::create(0, "inner");
        addInstance(*inner, part, Identity);
        addInstance(*inner, *inner, TwiceAsLarge);
        addInstance(*Assembly::create(0, "top"), *inner, Identity);
    });
    ASSERT_EQ(Completed, sent.status()) << sent.log();
    EXPECT_THAT(sent.log(), HasSubstr("it places an assembly within itself"));
}

TEST_F(StepPlaces, PlacesOnTopAndPartsInAssembliesAreKept)
{
    SentModel const sent = sendWith(tests::boxWithVoid(), [](Part & part) {
        part.setTransform(Matrix{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 7, 0, 0, 1}.data());
    });
    ASSERT_EQ(Completed, sent.status()) << sent.log();
    tests::Measures const one = tests::measuresOf(tests::boxWithVoid());
    EXPECT_NEAR(one.centre.X() + 7, tests::readByKernel(target()).measures.centre.X(), 1e-6);
}

} // namespace
