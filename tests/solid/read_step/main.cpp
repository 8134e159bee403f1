// SPDX-License-Identifier: GPL-3.0-or-later
/// Reads a STEP file and tells what is in it, in millimetres: a line each of a name and a value. With a file of points,
/// x y z, the largest distance of one from the skin too.
#include <BRepBndLib.hxx>
#include <BRepBuilderAPI_MakeVertex.hxx>
#include <BRepCheck_Analyzer.hxx>
#include <BRepExtrema_DistShapeShape.hxx>
#include <BRepGProp.hxx>
#include <BRep_Tool.hxx>
#include <Bnd_Box.hxx>
#include <GProp_GProps.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Message_Printer.hxx>
#include <STEPControl_Reader.hxx>
#include <Standard_Failure.hxx>
#include <TColStd_SequenceOfAsciiString.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS_Vertex.hxx>
#include <algorithm>
#include <cstdio>

namespace {

int Count(const TopoDS_Shape& shape, TopAbs_ShapeEnum kind)
{
    int count = 0;
    for (TopExp_Explorer it(shape, kind); it.More(); it.Next())
        ++count;
    return count;
}

/// Of the points from the nearest face.
double Furthest(const TopoDS_Shape& shape, const char* path)
{
    std::FILE* const file = std::fopen(path, "r");
    if (file == nullptr)
        return -1.0;
    double largest = -1.0;
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    const TopoDS_Shape skin = TopExp_Explorer(shape, TopAbs_SHELL).Current();
    while (std::fscanf(file, "%lf %lf %lf", &x, &y, &z) == 3) {
        const BRepExtrema_DistShapeShape distance(BRepBuilderAPI_MakeVertex(gp_Pnt(x, y, z)).Vertex(), skin);
        largest = distance.IsDone() ? std::max(largest, distance.Value()) : 1e9;
    }
    std::fclose(file);
    return largest;
}

int Read(const char* path, const char* points)
{
    Message::DefaultMessenger()->RemovePrinters(STANDARD_TYPE(Message_Printer));
    STEPControl_Reader reader;
    if (reader.ReadFile(path) != IFSelect_RetDone)
        return 2;
    TColStd_SequenceOfAsciiString lengths;
    TColStd_SequenceOfAsciiString angles;
    TColStd_SequenceOfAsciiString solid_angles;
    reader.FileUnits(lengths, angles, solid_angles);
    reader.TransferRoots();
    const TopoDS_Shape shape = reader.OneShape();
    if (shape.IsNull())
        return 3;
    bool closed = true;
    for (TopExp_Explorer it(shape, TopAbs_SHELL); it.More(); it.Next())
        closed = closed && BRep_Tool::IsClosed(it.Current());
    constexpr double exact = 1e-9;
    GProp_GProps volume;
    BRepGProp::VolumeProperties(shape, volume, exact);
    GProp_GProps area;
    BRepGProp::SurfaceProperties(shape, area, exact);
    Bnd_Box box;
    BRepBndLib::AddOptimal(shape, box, false, false);
    double low[3];
    double high[3];
    box.Get(low[0], low[1], low[2], high[0], high[1], high[2]);
    std::printf("unit %s\n", lengths.Length() > 0 ? lengths.First().ToCString() : "none");
    std::printf("solids %d\n", Count(shape, TopAbs_SOLID));
    std::printf("faces %d\n", Count(shape, TopAbs_FACE));
    std::printf("valid %d\n", BRepCheck_Analyzer(shape).IsValid() ? 1 : 0);
    std::printf("closed %d\n", closed ? 1 : 0);
    std::printf("volume %.12g\n", volume.Mass());
    std::printf("area %.12g\n", area.Mass());
    std::printf("low_x %.9g\nlow_y %.9g\nlow_z %.9g\n", low[0], low[1], low[2]);
    std::printf("high_x %.9g\nhigh_y %.9g\nhigh_z %.9g\n", high[0], high[1], high[2]);
    if (points != nullptr)
        std::printf("furthest %.6g\n", Furthest(shape, points));
    return 0;
}

}  // namespace

int main(int count, char** words)
{
    try {
        return count >= 2 ? Read(words[1], count == 3 ? words[2] : nullptr) : 1;
    } catch (const Standard_Failure& failure) {
        std::printf("failure %s\n", failure.GetMessageString());
        return 4;
    }
}
