# A model of B-spline surfaces, as much of each as the model stream carries.
@0xb5d4c1f0a9e83762;

using Cxx = import "/capnp/c++.capnp";
$Cxx.namespace("bench::capn");

struct Parameterization {
  form @0 :Int32;
  values @1 :List(Float64);
}

struct SplineForm {
  degree @0 :Int32;
  flagA @1 :Bool;
  flagB @2 :Bool;
  knots @3 :List(Float64);
  multiplicities @4 :List(Int32);
}

struct SplineSurface {
  id @0 :Int32;
  surfaceForm @1 :Int32;
  parameterizationU @2 :Parameterization;
  parameterizationV @3 :Parameterization;
  formU @4 :SplineForm;
  formV @5 :SplineForm;
  pointCountU @6 :Int32;
  pointCountV @7 :Int32;
  points @8 :List(Float64);
  weights @9 :List(Float64);
}

struct Model {
  surfaces @0 :List(SplineSurface);
}
