#include "exchange/records/topology_records.h"

#include "geom/owned.h"

namespace transl_tk {

void VertexRecord::read(StreamReader & reader)
{
    int id = 0;
    bool hasPoint = false;
    reader.i32(id);
    reader.u8(hasPoint);
    if (!hasPoint) {
        double parameter = 0.0;
        reader.f64(parameter);
        remember<VertexRecord>(reader, Vertex::create(id, parameter));
        return;
    }
    double position[3];
    reader.f64(position);
    geom::Owned<geom::Point> point(geom::Point::create(position[0], position[1], position[2]));
    if (remember<VertexRecord>(reader, Vertex::create(id, point.get())) != nullptr)
        point.release();
}

Edge * EdgeRecord::make(StreamReader const & reader) const
{
    SubPool & model = reader.session().subPool();
    return Edge::create(id, resolve<Curve3D>(model, curve), resolve<Vertex>(model, start),
                        resolve<Vertex>(model, end), sense);
}

Fin * FinRecord::make(StreamReader const & reader) const
{
    UVCurve * const trace = resolveOwned<UVCurve>(reader, uvCurve);
    Fin * const fin = Fin::create(id, resolve<Edge>(reader.session().subPool(), edge), sense);
    if (fin == nullptr)
        reader.fail("the id " + std::to_string(id) + " is taken");
    fin->setUVCurve(trace);
    return fin;
}

void LoopRecord::read(StreamReader & reader)
{
    int id = 0;
    reader.i32(id);
    Loop & loop = made<LoopRecord>(reader, Loop::create(id), id);
    readChildren<Fin>(reader, [&](Fin * fin) { loop.addFin(fin); });
}

void FaceRecord::read(StreamReader & reader)
{
    int id = 0;
    std::string label;
    bool sense = false;
    int surface = NoEntity;
    reader.i32(id);
    reader.string(label);
    reader.u8(sense);
    reader.i32(surface);
    Face & face = made<FaceRecord>(
        reader, Face::create(id, resolve<Surface>(reader.session().subPool(), surface)), id);
    face.setLabel(label.c_str());
    face.setSense(sense);
    readChildren<Loop>(reader, [&](Loop * loop) { face.addLoop(loop); });
}

void ShellRecord::read(StreamReader & reader)
{
    int id = 0;
    bool flag = false;
    reader.i32(id);
    reader.u8(flag);
    Shell & shell = made<ShellRecord>(reader, Shell::create(id), id);
    shell.setShellFlag(flag);
    readChildren<Face>(reader, [&](Face * face) { shell.addFace(face); });
}

void BodyRecord::read(StreamReader & reader)
{
    int id = 0;
    std::string name;
    reader.i32(id);
    reader.string(name);
    Body & body = made<BodyRecord>(reader, Body::create(id, name.c_str()), id);
    readChildren<Shell>(reader, [&](Shell * shell) { body.addShell(shell); });
    readChildren<TriStrip>(reader, [&](TriStrip * strip) { body.addTriStrip(strip); });
}

} // namespace transl_tk
