#ifndef STEP_ASSEMBLY_PALETTE_H
#define STEP_ASSEMBLY_PALETTE_H

#include "build_shapes.h"

#include <Quantity_Color.hxx>
#include <TDF_Label.hxx>
#include <TDocStd_Document.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_LayerTool.hxx>
#include <XCAFDoc_MaterialTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <string>

namespace vise {

enum class Material { CastIron, Steel, Brass, Rubber };

/// Puts shapes with what hangs on them into a document.
class Palette
{
public:
    explicit Palette(TDocStd_Document const & document);

    TDF_Label part(TopoDS_Shape const & shape, std::string const & name, char const * layer);
    TDF_Label assembly(std::string const & name);
    /// Places `what` in `assembly`, by the name `name`.
    TDF_Label place(TDF_Label const & assembly, TDF_Label const & what, std::string const & name,
                    gp_Trsf const & where = {});

    void paint(TDF_Label const & what, Quantity_Color const & colour);
    /// Paints one face of a part.
    void paint(TDF_Label const & part, TopoDS_Face const & face, Quantity_Color const & colour);
    void setMaterial(TDF_Label const & part, Material material);
    /// Volume, area and centre, with which a reader can tell whether all has arrived.
    void addProperties(TDF_Label const & part, TopoDS_Shape const & shape);

    /// To be called once all is placed.
    void finish();

private:
    Handle(XCAFDoc_ShapeTool) m_Shapes;
    Handle(XCAFDoc_ColorTool) m_Colours;
    Handle(XCAFDoc_LayerTool) m_Layers;
    Handle(XCAFDoc_MaterialTool) m_Materials;
};

} // namespace vise

#endif
