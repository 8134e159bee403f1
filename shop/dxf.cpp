// SPDX-License-Identifier: GPL-3.0-or-later
#include "shop/dxf.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

#include "core/basic_types.h"
#include "core/text.h"
#include "shop/curve_files.h"

namespace lobemax {

namespace {

/// Handles of what others point at; those of entities are counted on from First_Free.
enum Handle : unsigned {
    None = 0x0,
    Vport_Table = 0x1,
    Ltype_Table,
    Layer_Table,
    Style_Table,
    View_Table,
    Ucs_Table,
    Appid_Table,
    Dimstyle_Table,
    Block_Table,
    Root,
    Groups,
    Layouts,
    Mline_Styles,
    Plot_Settings,
    Plot_Styles,
    Plot_Normal,
    Mline_Standard,
    Model_Layout,
    Paper_Layout,
    Model_Record,
    Paper_Record,
    Text_Style,
    First_Free = 0x30,
};

/// A curve is told by its points to this many decimals of a millimetre or inch: exact to a double's figures.
constexpr int decimals = 14;

class Dxf_Writer {
public:
    explicit Dxf_Writer(const Curve_Set& set) : set_(set) {}

    std::string Text(std::string_view file_name)
    {
        std::string entities = Section("ENTITIES", [&] { Entities(); });
        std::string tables = Section("TABLES", [&] { Tables(); });
        std::string blocks = Section("BLOCKS", [&] { Blocks(); });
        std::string objects = Section("OBJECTS", [&] { Objects(); });
        std::string classes = Section("CLASSES", [&] { Classes(); });
        std::string header = Section("HEADER", [&] { Header(); });
        text_.clear();
        for (const auto& [name, words] : Facts_of(set_, file_name))
            Put(999, On_One_Line(name + ": " + words));
        std::string whole = text_ + header + classes + tables + blocks + entities + objects;
        text_.clear();
        Put(0, "EOF");
        return whole + text_;
    }

private:
    template <class Work>
    std::string Section(const char* name, Work work)
    {
        text_.clear();
        Put(0, "SECTION");
        Put(2, name);
        work();
        Put(0, "ENDSEC");
        return std::move(text_);
    }

    void Put(int code, std::string_view value)
    {
        const std::string number = std::to_string(code);
        text_.append(number.size() < 3 ? 3 - number.size() : 0, ' ');
        text_ += number;
        text_ += "\r\n";
        text_ += value;
        text_ += "\r\n";
    }
    void Put(int code, const char* value) { Put(code, std::string_view(value)); }
    void Put(int code, int value) { Put(code, std::string_view(std::to_string(value))); }
    void Put(int code, double value) { Put(code, std::string_view(Plain_Number(value, decimals))); }
    void Put_Handle(int code, unsigned handle)
    {
        constexpr std::string_view digits = "0123456789ABCDEF";
        std::string text;
        do {
            text.insert(text.begin(), digits[handle % digits.size()]);
            handle /= static_cast<unsigned>(digits.size());
        } while (handle != 0);
        Put(code, std::string_view(text));
    }
    void Put_Point(int code, Vector p)
    {
        Put(code, p.x);
        Put(code + 10, p.y);
    }
    void Put_Place(int code, Vector p)
    {
        Put_Point(code, p);
        Put(code + 20, 0.0);
    }

    // ---- Header and classes

    void Header()
    {
        Put(9, "$ACADVER");
        Put(1, "AC1024");
        Put(9, "$DWGCODEPAGE");
        Put(3, "ANSI_1252");
        Put(9, "$INSBASE");
        Put_Place(10, {});
        Put(9, "$EXTMIN");
        Put_Place(10, set_.low);
        Put(9, "$EXTMAX");
        Put_Place(10, set_.high);
        Put(9, "$INSUNITS");
        Put(70, Units());
        Put(9, "$MEASUREMENT");
        Put(70, set_.units <= 2 ? 0 : 1);
        Put(9, "$LUNITS");
        Put(70, 2);
        Put(9, "$LUPREC");
        Put(70, 6);
        Put(9, "$AUNITS");
        Put(70, 0);
        Put(9, "$HANDSEED");
        Put_Handle(5, next_);
    }

    int Units() const
    {
        constexpr std::array<int, 5> codes{1, 2, 6, 5, 4};  // inches, feet, metres, centimetres, millimetres
        return codes[Checked_Place(set_.units, 1, static_cast<int>(codes.size()))];
    }

    void Classes()
    {
        constexpr std::array<std::array<const char*, 2>, 3> classes{
            {{"ACDBDICTIONARYWDFLT", "AcDbDictionaryWithDefault"},
             {"ACDBPLACEHOLDER", "AcDbPlaceHolder"},
             {"LAYOUT", "AcDbLayout"}}};
        for (const auto& [record, name] : classes) {
            Put(0, "CLASS");
            Put(1, record);
            Put(2, name);
            Put(3, "ObjectDBX Classes");
            Put(90, 0);
            Put(91, 0);
            Put(280, 0);
            Put(281, 0);
        }
    }

    // ---- Tables

    void Open_Table(const char* name, unsigned handle, int entries)
    {
        Put(0, "TABLE");
        Put(2, name);
        Put_Handle(5, handle);
        Put_Handle(330, None);
        Put(100, "AcDbSymbolTable");
        Put(70, entries);
    }
    void Close_Table() { Put(0, "ENDTAB"); }

    void Open_Record(const char* type, unsigned handle, unsigned owner, const char* subclass, std::string_view name)
    {
        Put(0, type);
        Put_Handle(std::string_view(type) == "DIMSTYLE" ? 105 : 5, handle);
        Put_Handle(330, owner);
        Put(100, "AcDbSymbolTableRecord");
        Put(100, subclass);
        Put(2, name);
    }

    void Tables()
    {
        Open_Table("VPORT", Vport_Table, 1);
        Viewport();
        Close_Table();
        Open_Table("LTYPE", Ltype_Table, 3);
        for (const auto& [name, words] : std::array<std::array<const char*, 2>, 3>{
                 {{"ByBlock", ""}, {"ByLayer", ""}, {"Continuous", "Solid line"}}}) {
            Open_Record("LTYPE", next_++, Ltype_Table, "AcDbLinetypeTableRecord", name);
            Put(70, 0);
            Put(3, words);
            Put(72, 65);
            Put(73, 0);
            Put(40, 0.0);
        }
        Close_Table();
        Open_Table("LAYER", Layer_Table, Curve_Layers + 1);
        Layer("0", 7);
        constexpr std::array<int, Curve_Layers> colours{7, 1, 3, 8, 9, 5, 5, 2};
        for (int i = 0; i < Curve_Layers; ++i)
            Layer(Name_of(static_cast<Curve_Layer>(i)), colours[static_cast<std::size_t>(i)]);
        Close_Table();
        Open_Table("STYLE", Style_Table, 1);
        Open_Record("STYLE", Text_Style, Style_Table, "AcDbTextStyleTableRecord", "Standard");
        Put(70, 0);
        Put(40, 0.0);
        Put(41, 1.0);
        Put(50, 0.0);
        Put(71, 0);
        Put(42, 2.5);
        Put(3, "txt");
        Put(4, "");
        Close_Table();
        Open_Table("VIEW", View_Table, 0);
        Close_Table();
        Open_Table("UCS", Ucs_Table, 0);
        Close_Table();
        Open_Table("APPID", Appid_Table, 1);
        Open_Record("APPID", next_++, Appid_Table, "AcDbRegAppTableRecord", "ACAD");
        Put(70, 0);
        Close_Table();
        Open_Table("DIMSTYLE", Dimstyle_Table, 1);
        Put(100, "AcDbDimStyleTable");
        Put(71, 0);
        Open_Record("DIMSTYLE", next_++, Dimstyle_Table, "AcDbDimStyleTableRecord", "Standard");
        Put(70, 0);
        Put_Handle(340, Text_Style);
        Close_Table();
        Open_Table("BLOCK_RECORD", Block_Table, 2);
        Block_Record(Model_Record, "*Model_Space", Model_Layout);
        Block_Record(Paper_Record, "*Paper_Space", Paper_Layout);
        Close_Table();
    }

    void Viewport()
    {
        const Vector size = set_.high - set_.low;
        const Vector middle = 0.5 * (set_.low + set_.high);
        Open_Record("VPORT", next_++, Vport_Table, "AcDbViewportTableRecord", "*Active");
        Put(70, 0);
        Put_Point(10, {0.0, 0.0});
        Put_Point(11, {1.0, 1.0});
        Put_Point(12, middle);
        Put_Point(13, {0.0, 0.0});
        Put_Point(14, {1.0, 1.0});
        Put_Point(15, {1.0, 1.0});
        Put_Point(16, {0.0, 0.0});
        Put(36, 1.0);
        Put_Point(17, {0.0, 0.0});
        Put(37, 0.0);
        Put(40, 1.1 * std::max(size.y, 0.6 * size.x));
        Put(41, 1.6);
        Put(42, 50.0);
        Put(43, 0.0);
        Put(44, 0.0);
        Put(50, 0.0);
        Put(51, 0.0);
        Put(71, 0);
        Put(72, 1000);
        Put(73, 1);
        Put(74, 3);
        Put(75, 0);
        Put(76, 0);
        Put(77, 0);
        Put(78, 0);
    }

    void Layer(std::string_view name, int colour)
    {
        constexpr int usual_weight = -3;
        Open_Record("LAYER", next_++, Layer_Table, "AcDbLayerTableRecord", name);
        Put(70, 0);
        Put(62, colour);
        Put(6, "Continuous");
        Put(370, usual_weight);
        Put_Handle(390, Plot_Normal);
    }

    void Block_Record(unsigned handle, const char* name, unsigned layout)
    {
        Open_Record("BLOCK_RECORD", handle, Block_Table, "AcDbBlockTableRecord", name);
        Put_Handle(340, layout);
        Put(70, 0);
        Put(280, 1);
        Put(281, 0);
    }

    void Blocks()
    {
        for (const bool paper : {false, true}) {
            const char* const name = paper ? "*Paper_Space" : "*Model_Space";
            const unsigned record = paper ? Paper_Record : Model_Record;
            for (const bool end : {false, true}) {
                Put(0, end ? "ENDBLK" : "BLOCK");
                Put_Handle(5, next_++);
                Put_Handle(330, record);
                Put(100, "AcDbEntity");
                if (paper)
                    Put(67, 1);
                Put(8, "0");
                Put(100, end ? "AcDbBlockEnd" : "AcDbBlockBegin");
                if (end)
                    continue;
                Put(2, name);
                Put(70, 0);
                Put_Place(10, {});
                Put(3, name);
                Put(1, "");
            }
        }
    }

    // ---- Entities

    void Open_Entity(const char* type, Curve_Layer layer, const char* subclass)
    {
        Put(0, type);
        Put_Handle(5, next_++);
        Put_Handle(330, Model_Record);
        Put(100, "AcDbEntity");
        Put(8, Name_of(layer));
        Put(100, subclass);
    }

    void Entities()
    {
        for (int i = 0; i < Curve_Layers; ++i) {
            const auto layer = static_cast<Curve_Layer>(i);
            for (const Fitted_Curve& curve : set_.curves)
                if (curve.layer == layer && curve.spline)
                    Spline(layer, *curve.spline);
                else if (curve.layer == layer)
                    Polyline(layer, curve.path.elements, curve.closed);
            for (const Set_Circle& circle : set_.circles)
                if (circle.layer == layer) {
                    Open_Entity("CIRCLE", layer, "AcDbCircle");
                    Put_Place(10, {});
                    Put(40, circle.radius);
                }
            if (layer == Curve_Layer::keyway && !set_.keyway.empty())
                Polyline(layer, set_.keyway, true);
            if (layer == Curve_Layer::notes)
                Notes();
        }
    }

    void Polyline(Curve_Layer layer, const std::vector<Surface_Element>& elements, bool closed)
    {
        Open_Entity("LWPOLYLINE", layer, "AcDbPolyline");
        Put(90, static_cast<int>(elements.size()) + (closed ? 0 : 1));
        Put(70, closed ? 1 : 0);
        Put(43, 0.0);
        for (const Surface_Element& element : elements) {
            Put_Point(10, element.from);
            if (element.bulge != 0.0)
                Put(42, element.bulge);
        }
        if (!closed)
            Put_Point(10, elements.back().to);
    }

    void Spline(Curve_Layer layer, const Cubic_Spline& spline)
    {
        constexpr int planar = 8;
        Open_Entity("SPLINE", layer, "AcDbSpline");
        Put(210, 0.0);
        Put(220, 0.0);
        Put(230, 1.0);
        Put(70, planar);
        Put(71, 3);
        Put(72, static_cast<int>(spline.knots.size()));
        Put(73, static_cast<int>(spline.control.size()));
        Put(74, 0);
        Put(42, 1e-9);
        Put(43, 1e-10);
        for (const double knot : spline.knots)
            Put(40, knot);
        for (const Vector& p : spline.control)
            Put_Place(10, p);
    }

    void Notes()
    {
        for (const Mark_Note& note : set_.notes) {
            Open_Entity("LINE", Curve_Layer::notes, "AcDbLine");
            Put_Place(10, note.from);
            Put_Place(11, note.to);
            Open_Entity("TEXT", Curve_Layer::notes, "AcDbText");
            Put_Place(10, note.text_at);
            Put(40, set_.text_height);
            Put(1, On_One_Line(note.text));
            Put(7, "Standard");
            if (note.ends_there) {
                constexpr int right = 2;
                Put(72, right);
                Put_Place(11, note.text_at);
            }
            Put(100, "AcDbText");
        }
    }

    // ---- Objects

    void Open_Dictionary(const char* type, unsigned handle, unsigned owner)
    {
        Put(0, type);
        Put_Handle(5, handle);
        Put_Handle(330, owner);
        Put(100, "AcDbDictionary");
        Put(281, 1);
    }
    void Put_Item(const char* name, unsigned handle)
    {
        Put(3, name);
        Put_Handle(350, handle);
    }

    void Objects()
    {
        Open_Dictionary("DICTIONARY", Root, None);
        Put_Item("ACAD_GROUP", Groups);
        Put_Item("ACAD_LAYOUT", Layouts);
        Put_Item("ACAD_MLINESTYLE", Mline_Styles);
        Put_Item("ACAD_PLOTSETTINGS", Plot_Settings);
        Put_Item("ACAD_PLOTSTYLENAME", Plot_Styles);
        Open_Dictionary("DICTIONARY", Groups, Root);
        Open_Dictionary("DICTIONARY", Layouts, Root);
        Put_Item("Layout1", Paper_Layout);
        Put_Item("Model", Model_Layout);
        Open_Dictionary("DICTIONARY", Mline_Styles, Root);
        Put_Item("Standard", Mline_Standard);
        Open_Dictionary("DICTIONARY", Plot_Settings, Root);
        Open_Dictionary("ACDBDICTIONARYWDFLT", Plot_Styles, Root);
        Put_Item("Normal", Plot_Normal);
        Put(100, "AcDbDictionaryWithDefault");
        Put_Handle(340, Plot_Normal);
        Put(0, "ACDBPLACEHOLDER");
        Put_Handle(5, Plot_Normal);
        Put_Handle(330, Plot_Styles);
        Mline_Style();
        Layout(Model_Layout, "Model", 0, Model_Record);
        Layout(Paper_Layout, "Layout1", 1, Paper_Record);
    }

    void Mline_Style()
    {
        constexpr int by_layer = 256;
        Put(0, "MLINESTYLE");
        Put_Handle(5, Mline_Standard);
        Put_Handle(330, Mline_Styles);
        Put(100, "AcDbMlineStyle");
        Put(2, "Standard");
        Put(70, 0);
        Put(3, "");
        Put(62, by_layer);
        Put(51, 90.0);
        Put(52, 90.0);
        Put(71, 2);
        for (const double offset : {0.5, -0.5}) {
            Put(49, offset);
            Put(62, by_layer);
            Put(6, "BYLAYER");
        }
    }

    void Layout(unsigned handle, const char* name, int order, unsigned record)
    {
        constexpr int model_space = 1024;
        Put(0, "LAYOUT");
        Put_Handle(5, handle);
        Put_Handle(330, Layouts);
        Put(100, "AcDbPlotSettings");
        Put(1, "");
        Put(2, "none_device");
        Put(4, "");
        Put(6, "");
        for (const int code : {40, 41, 42, 43, 44, 45, 46, 47, 48, 49, 140, 141})
            Put(code, 0.0);
        Put(142, 1.0);
        Put(143, 1.0);
        Put(70, order == 0 ? model_space : 0);
        Put(72, 1);
        Put(73, 0);
        Put(74, 5);
        Put(7, "");
        Put(75, 16);
        Put(147, 1.0);
        Put(148, 0.0);
        Put(149, 0.0);
        Put(100, "AcDbLayout");
        Put(1, name);
        Put(70, 1);
        Put(71, order);
        Put_Point(10, {0.0, 0.0});
        Put_Point(11, {420.0, 297.0});
        Put_Place(12, {});
        Put_Place(14, set_.low);
        Put_Place(15, set_.high);
        Put(146, 0.0);
        Put_Place(13, {});
        Put_Place(16, {1.0, 0.0});
        Put_Place(17, {0.0, 1.0});
        Put(76, 0);
        Put_Handle(330, record);
    }

    const Curve_Set& set_;
    std::string text_;
    unsigned next_ = First_Free;
};

}  // namespace

std::string Dxf_Text(const Curve_Set& set, std::string_view file_name)
{
    return Dxf_Writer(set).Text(file_name);
}

}  // namespace lobemax
