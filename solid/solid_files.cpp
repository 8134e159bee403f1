// SPDX-License-Identifier: GPL-3.0-or-later
#include "solid/solid_files.h"

#include <APIHeaderSection_MakeHeader.hxx>
#include <BRepAdaptor_Surface.hxx>
#include <BRepBuilderAPI_Copy.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <BRep_Tool.hxx>
#include <Interface_Static.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Message_Printer.hxx>
#include <Poly_Triangulation.hxx>
#include <STEPControl_Controller.hxx>
#include <STEPControl_Writer.hxx>
#include <StepBasic_Product.hxx>
#include <StepData_Protocol.hxx>
#include <StepData_StepModel.hxx>
#include <StepData_StepWriter.hxx>
#include <TCollection_HAsciiString.hxx>
#include <TopExp_Explorer.hxx>
#include <TopLoc_Location.hxx>
#include <TopoDS.hxx>
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <mutex>
#include <sstream>

namespace lobemax {

namespace {

Handle(TCollection_HAsciiString) Words(const std::string& text)
{
    return new TCollection_HAsciiString(text.c_str());
}

/// What a string of a STEP file holds as it is: printable ASCII.
std::string Plain(const std::string& text)
{
    std::string plain;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x80 && byte < 0xC0)
            continue;  // goes on with the character before
        plain += byte < 0x20 || byte > 0x7E ? '_' : c;
    }
    return plain;
}

/// The settings of the library's writer are of the process.
std::mutex& Settings()
{
    static std::mutex mutex;
    return mutex;
}

void Start_Library()
{
    // What a program says is its own.
    Message::DefaultMessenger()->RemovePrinters(STANDARD_TYPE(Message_Printer));
    STEPControl_Controller::Init();
}

}  // namespace

std::string Step_Bytes(const TopoDS_Solid& solid, const Solid_Names& names, std::string& bytes)
{
    const std::lock_guard alone(Settings());
    Start_Library();
    const std::string product = Plain(names.product);
    Interface_Static::SetCVal("write.step.schema", "AP214IS");
    Interface_Static::SetCVal("xstep.cascade.unit", "MM");
    Interface_Static::SetCVal("write.step.unit", names.inches ? "INCH" : "MM");
    Interface_Static::SetCVal("write.step.product.name", product.c_str());
    constexpr int greatest = 1;  // of the tolerances of the body: that within which its faces meet
    Interface_Static::SetIVal("write.precision.mode", greatest);
    STEPControl_Writer writer;
    if (writer.Transfer(solid, STEPControl_ManifoldSolidBrep) != IFSelect_RetDone)
        return "This body could not be put into a STEP file.";
    const Handle(StepData_StepModel) model = writer.Model();
    // The library counts the products of a process in their names.
    for (int i = 1; i <= model->NbEntities(); ++i) {
        const Handle(StepBasic_Product) part = Handle(StepBasic_Product)::DownCast(model->Value(i));
        if (!part.IsNull()) {
            part->SetId(Words(product));
            part->SetName(Words(product));
        }
    }
    APIHeaderSection_MakeHeader header(model);
    header.SetName(Words(Plain(names.file)));
    header.SetTimeStamp(Words(Plain(names.date + "T" + names.time)));
    header.SetAuthorValue(1, Words(""));
    header.SetOrganizationValue(1, Words(""));
    header.SetPreprocessorVersion(Words("Open CASCADE"));
    header.SetOriginatingSystem(Words("LOBEMAX"));
    header.SetAuthorisation(Words(""));
    header.SetDescriptionValue(1, Words(product));
    header.Apply(model);
    StepData_StepWriter text(model);
    text.SendModel(Handle(StepData_Protocol)::DownCast(model->Protocol()));
    std::ostringstream out;
    if (!text.Print(out) || !out)
        return "This body could not be put into a STEP file.";
    bytes = out.str();
    return "";
}

namespace {

void Put(std::string& bytes, const void* value, std::size_t size)
{
    bytes.append(static_cast<const char*>(value), size);
}

void Put(std::string& bytes, const std::array<double, 3>& v)
{
    for (const double x : v) {
        const auto single = static_cast<float>(x == 0.0 ? 0.0 : x);
        Put(bytes, &single, sizeof single);
    }
}

}  // namespace

namespace {

/// How far a triangle lies beside its surface, at its own middle and at those of its sides: up to the surface's place
/// of the same parameters, so rather too much.
double Beside(const BRepAdaptor_Surface& surface, const std::array<gp_Pnt2d, 3>& corners)
{
    std::array<gp_XYZ, 3> p;
    for (std::size_t i = 0; i < 3; ++i)
        p[i] = surface.Value(corners[i].X(), corners[i].Y()).XYZ();
    double largest = 0.0;
    for (const std::array<double, 3>& w : {std::array{1.0 / 3, 1.0 / 3, 1.0 / 3}, std::array{0.5, 0.5, 0.0},
                                           std::array{0.0, 0.5, 0.5}, std::array{0.5, 0.0, 0.5}}) {
        const gp_XY at = w[0] * corners[0].XY() + w[1] * corners[1].XY() + w[2] * corners[2].XY();
        const gp_XYZ flat = w[0] * p[0] + w[1] * p[1] + w[2] * p[2];
        largest = std::max(largest, surface.Value(at.X(), at.Y()).Distance(gp_Pnt(flat)));
    }
    return largest;
}

}  // namespace

std::string Stl_Bytes(const TopoDS_Solid& solid, const Solid_Names& names, double deflection, std::string& bytes,
                      Stl_Triangles& triangles)
{
    constexpr double angle = 0.1;  // radians between neighbours
    constexpr double inch = 25.4;
    constexpr std::size_t head = 80;
    const double scale = names.inches ? 1.0 / inch : 1.0;
    const TopoDS_Shape copy = BRepBuilderAPI_Copy(solid, false, false).Shape();
    BRepMesh_IncrementalMesh mesh(copy, deflection, false, angle, false);
    if (!mesh.IsDone())
        return "This body could not be divided into triangles.";
    std::string text = Plain("LOBEMAX " + names.product + (names.inches ? ", inches" : ", millimetres"));
    text.resize(head, ' ');
    std::string body;
    std::uint32_t count = 0;
    for (TopExp_Explorer it(copy, TopAbs_FACE); it.More(); it.Next()) {
        const TopoDS_Face& face = TopoDS::Face(it.Current());
        TopLoc_Location place;
        const Handle(Poly_Triangulation) net = BRep_Tool::Triangulation(face, place);
        if (net.IsNull())
            return "This body could not be divided into triangles.";
        const BRepAdaptor_Surface surface(face, false);
        for (int i = 1; i <= net->NbTriangles(); ++i) {
            std::array<int, 3> nodes{};
            net->Triangle(i).Get(nodes[0], nodes[1], nodes[2]);
            if (face.Orientation() == TopAbs_REVERSED)
                std::swap(nodes[1], nodes[2]);
            std::array<gp_Pnt, 3> p;
            for (std::size_t j = 0; j < 3; ++j)
                p[j] = net->Node(nodes[j]).Transformed(place.Transformation());
            if (net->HasUVNodes())
                triangles.largest_deviation =
                    std::max(triangles.largest_deviation,
                             Beside(surface, {net->UVNode(nodes[0]), net->UVNode(nodes[1]), net->UVNode(nodes[2])}));
            gp_Vec normal = gp_Vec(p[0], p[1]).Crossed(gp_Vec(p[0], p[2]));
            if (normal.Magnitude() > 0.0)
                normal.Normalize();
            Put(body, {normal.X(), normal.Y(), normal.Z()});
            for (const gp_Pnt& q : p)
                Put(body, {scale * q.X(), scale * q.Y(), scale * q.Z()});
            body.append(2, '\0');
            ++count;
        }
    }
    Put(text, &count, sizeof count);
    bytes = text + body;
    triangles.count = static_cast<int>(count);
    return "";
}

}  // namespace lobemax
