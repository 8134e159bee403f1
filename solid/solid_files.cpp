// SPDX-License-Identifier: GPL-3.0-or-later
#include "solid/solid_files.h"

#include <APIHeaderSection_MakeHeader.hxx>
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
    STEPControl_Writer writer;
    if (writer.Transfer(solid, STEPControl_ManifoldSolidBrep) != IFSelect_RetDone)
        return "This body could not be put into a STEP file.";
    const Handle(StepData_StepModel) model = writer.Model();
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

std::string Stl_Bytes(const TopoDS_Solid& solid, const Solid_Names& names, double deflection, std::string& bytes,
                      int& triangles)
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
        for (int i = 1; i <= net->NbTriangles(); ++i) {
            std::array<int, 3> nodes{};
            net->Triangle(i).Get(nodes[0], nodes[1], nodes[2]);
            if (face.Orientation() == TopAbs_REVERSED)
                std::swap(nodes[1], nodes[2]);
            std::array<gp_Pnt, 3> p;
            for (std::size_t j = 0; j < 3; ++j)
                p[j] = net->Node(nodes[j]).Transformed(place.Transformation());
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
    triangles = static_cast<int>(count);
    return "";
}

}  // namespace lobemax
