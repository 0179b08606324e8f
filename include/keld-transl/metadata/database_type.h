#ifndef KELD_TRANSL_METADATA_DATABASE_TYPE_H
#define KELD_TRANSL_METADATA_DATABASE_TYPE_H

namespace transl_tk {

/// Keys of a model's metadata. The numbers are kept by stores and travel with the model; any other
/// number is a plain key of the store's own.
enum DataBaseType : int {
    AttributesType12 = 0,
    AttributesGeneral = 2, ///< attributes of types 1 to 4, 6, 8, 9 and 13 to 16
    Annotations = 3,
    AttributesType11 = 4,
    AttributesType5 = 8,
    AttributesType7 = 9, ///< without those that are named "ANNOTATION:"
    TextList = 19,       ///< holds the collected text, no number
    HoleFeatures = 21,   ///< features with "HOLE" in their names
    BlendFeatures = 22,  ///< features with "CHAMFER" or "FILLET" in their names
    Faces = 70,
    Triangles = 71, ///< of all meshes
    Assemblies = 72,
    Parts = 73,
    Instances = 74,
    AssemblyInstances = 75, ///< instances of an assembly
    PartInstances = 76,     ///< instances of a part
    SpotWelds = 78,
    AttributesType10 = 79,
    FeatureCounts = 83, ///< holds the named counters
    SurfaceBSpline = 84,
    SurfaceType1 = 85,
    SurfaceCone = 86,
    SurfaceCylinder = 87,
    SurfaceOffset = 88,
    SurfaceRevolution = 89,
    SurfaceRuled = 90,
    SurfaceExtrusion = 91,
    SurfaceTorus = 92,
    SurfaceSphere = 93,
    SurfacePlane = 94,
    SurfaceType6 = 95,
    CurveCircle = 98,
    CurveLine = 99,
    CurveLineStrip = 100,
    CurveComposite = 102,
    CurveBSpline = 103,
    CurveType4 = 104,
    CurveEllipse = 105
};

} // namespace transl_tk

#endif
