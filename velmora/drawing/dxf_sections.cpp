#include "velmora/drawing/dxf_sections.h"

#include <algorithm>

namespace velmora::drawing {
namespace {

// Handles of what is always there; the objects in kObjects have theirs in the text.
enum : long long {
  kViewports = 1,
  kLineTypes,
  kLayers,
  kStyles,
  kViews,
  kCoordinateSystems,
  kApplications,
  kDimensionStyles,
  kBlockRecords,
  kViewport = 0x17,
  kLineType,
  kLayer = 0x1B,
  kStyle,
  kApplication = 0x1E,
  kDimensionStyle,
};

constexpr std::string_view kBlocks = R"(0 TABLE
2 BLOCK_RECORD
5 9
330 0
100 AcDbSymbolTable
70 2
0 BLOCK_RECORD
5 11
330 9
100 AcDbSymbolTableRecord
100 AcDbBlockTableRecord
2 *Model_Space
340 F
0 BLOCK_RECORD
5 12
330 9
100 AcDbSymbolTableRecord
100 AcDbBlockTableRecord
2 *Paper_Space
340 10
0 ENDTAB
0 ENDSEC
0 SECTION
2 BLOCKS
0 BLOCK
5 13
330 11
100 AcDbEntity
8 0
100 AcDbBlockBegin
2 *Model_Space
70 0
10 0
20 0
30 0
3 *Model_Space
1
0 ENDBLK
5 14
330 11
100 AcDbEntity
8 0
100 AcDbBlockEnd
0 BLOCK
5 15
330 12
100 AcDbEntity
67 1
8 0
100 AcDbBlockBegin
2 *Paper_Space
70 0
10 0
20 0
30 0
3 *Paper_Space
1
0 ENDBLK
5 16
330 12
100 AcDbEntity
67 1
8 0
100 AcDbBlockEnd
0 ENDSEC
0 SECTION
2 ENTITIES
)";

constexpr std::string_view kObjects = R"(0 ENDSEC
0 SECTION
2 OBJECTS
0 DICTIONARY
5 A
330 0
100 AcDbDictionary
281 1
3 ACAD_GROUP
350 B
3 ACAD_LAYOUT
350 C
3 ACAD_PLOTSTYLENAME
350 D
0 DICTIONARY
5 B
330 A
100 AcDbDictionary
281 1
0 DICTIONARY
5 C
330 A
100 AcDbDictionary
281 1
3 Layout1
350 10
3 Model
350 F
0 ACDBDICTIONARYWDFLT
5 D
330 A
100 AcDbDictionary
281 1
3 Normal
350 E
100 AcDbDictionaryWithDefault
340 E
0 ACDBPLACEHOLDER
5 E
330 D
)";

constexpr std::string_view kPlotSettings = R"(330 C
100 AcDbPlotSettings
1
2 none_device
4
6
40 0
41 0
42 0
43 0
44 0
45 0
46 0
47 0
48 0
49 0
140 0
141 0
142 1
143 1
)";

constexpr std::string_view kLayoutExtent = R"(72 1
73 0
74 5
7
75 16
147 1
148 0
149 0
100 AcDbLayout
)";

constexpr std::string_view kLayoutAxes = R"(10 0
20 0
11 420
21 297
12 0
22 0
32 0
14 0
24 0
34 0
15 0
25 0
35 0
146 0
13 0
23 0
33 0
16 1
26 0
36 0
17 0
27 1
37 0
76 0
)";

void AddLayout(long long handle, std::string_view name, int order, int plot_flags, long long block,
               DxfGroupText* groups) {
  groups->Text(0, "LAYOUT").Handle(5, handle).Lines(kPlotSettings).Integer(70, plot_flags);
  groups->Lines(kLayoutExtent).Text(1, name).Integer(70, 1).Integer(71, order).Lines(kLayoutAxes);
  groups->Handle(330, block);
}

void BeginTable(std::string_view name, long long handle, size_t entries, DxfGroupText* groups) {
  groups->Text(0, "TABLE").Text(2, name).Handle(5, handle).Integer(330, 0).Text(100, "AcDbSymbolTable");
  groups->Integer(70, static_cast<long long>(entries));
}

// The begin of a table's entry.
void AddEntry(std::string_view type, std::string_view kind, std::string_view name, long long table,
              long long handle, DxfGroupText* groups) {
  groups->Text(0, type).Handle(type == "DIMSTYLE" ? 105 : 5, handle).Handle(330, table);
  groups->Text(100, "AcDbSymbolTableRecord").Text(100, kind).Text(2, name).Integer(70, 0);
}

void AddHeader(const DxfContents& contents, DxfGroupText* groups) {
  groups->Lines("0 SECTION\n2 HEADER\n9 $ACADVER\n1 AC1018\n9 $DWGCODEPAGE\n3 ANSI_1252\n");
  groups->Text(9, "$HANDSEED").Handle(5, contents.next_handle);
  groups->Text(9, "$EXTMIN").At(10, contents.x.low, contents.y.low).Integer(30, 0);
  groups->Text(9, "$EXTMAX").At(10, contents.x.high, contents.y.high).Integer(30, 0);
  groups->Text(9, "$INSUNITS").Integer(70, contents.metres ? 6 : 4);
  groups->Lines("9 $MEASUREMENT\n70 1\n9 $LTSCALE\n40 1\n9 $LWDISPLAY\n290 1\n0 ENDSEC\n");
}

// The whole drawing on the screen.
void AddViewport(const DxfContents& contents, DxfGroupText* groups) {
  constexpr double kScreen = 1.6;  // its width beside its height
  const double height = std::max({contents.y.Size(), contents.x.Size() / kScreen, 1.0});
  BeginTable("VPORT", kViewports, 1, groups);
  AddEntry("VPORT", "AcDbViewportTableRecord", "*Active", kViewports, kViewport, groups);
  groups->Lines("10 0\n20 0\n11 1\n21 1\n").At(12, contents.x.Middle(), contents.y.Middle());
  groups->Lines("13 0\n23 0\n14 10\n24 10\n15 10\n25 10\n16 0\n26 0\n36 1\n17 0\n27 0\n37 0\n");
  groups->Real(40, height).Real(41, kScreen).Lines("42 50\n43 0\n44 0\n50 0\n51 0\n71 0\n72 1000\n73 1\n");
  groups->Lines("74 3\n75 0\n76 0\n77 0\n78 0\n0 ENDTAB\n");
}

void AddLineType(std::string_view name, long long handle, const std::array<double, 2>& dash,
                 DxfGroupText* groups) {
  AddEntry("LTYPE", "AcDbLinetypeTableRecord", name, kLineTypes, handle, groups);
  groups->Text(3, "").Integer(72, 65).Integer(73, dash[0] > 0 ? 2 : 0).Real(40, dash[0] + dash[1]);
  if (dash[0] > 0) groups->Real(49, dash[0]).Integer(74, 0).Real(49, -dash[1]).Integer(74, 0);
}

void AddStyle(std::string_view name, long long handle, std::string_view font, DxfGroupText* groups) {
  AddEntry("STYLE", "AcDbTextStyleTableRecord", name, kStyles, handle, groups);
  groups->Lines("40 0\n41 1\n50 0\n71 0\n42 2.5\n").Text(3, font).Text(4, "");
}

void AddLayer(const DxfLayer& layer, long long handle, DxfGroupText* groups) {
  AddEntry("LAYER", "AcDbLayerTableRecord", layer.name, kLayers, handle, groups);
  AddDxfColour(layer.colour, groups);
  groups->Lines("6 Continuous\n370 -3\n390 E\n");
}

void AddView(const DxfView& view, long long handle, DxfGroupText* groups) {
  const SheetRect& r = view.rectangle;
  AddEntry("VIEW", "AcDbViewTableRecord", view.name, kViews, handle, groups);
  groups->Real(40, r.height).At(10, r.x + r.width / 2, r.y + r.height / 2).Real(41, r.width);
  groups->Lines("11 0\n21 0\n31 1\n12 0\n22 0\n32 0\n42 50\n43 0\n44 0\n50 0\n71 0\n281 0\n72 0\n");
}

void AddTables(const DxfContents& contents, long long handle, DxfGroupText* groups) {
  groups->Lines("0 SECTION\n2 TABLES\n");
  AddViewport(contents, groups);

  BeginTable("LTYPE", kLineTypes, 3 + contents.dashes.size(), groups);
  long long fixed = kLineType;
  for (const char* name : {"ByBlock", "ByLayer", "Continuous"}) AddLineType(name, fixed++, {}, groups);
  for (size_t i = 0; i < contents.dashes.size(); ++i)
    AddLineType(DxfDashName(i), handle++, contents.dashes[i], groups);
  groups->Text(0, "ENDTAB");

  BeginTable("LAYER", kLayers, 1 + contents.layers.size(), groups);
  AddLayer({"0", 0}, kLayer, groups);
  for (const DxfLayer& layer : contents.layers) AddLayer(layer, handle++, groups);
  groups->Text(0, "ENDTAB");

  // The font that every system with CAD has; its capitals are as high as a text's height.
  BeginTable("STYLE", kStyles, 2, groups);
  AddStyle("Standard", kStyle, "arial.ttf", groups);
  AddStyle(kDxfBoldStyle, kStyle + 1, "arialbd.ttf", groups);
  groups->Text(0, "ENDTAB");

  BeginTable("VIEW", kViews, contents.views.size(), groups);
  for (const DxfView& view : contents.views) AddView(view, handle++, groups);
  groups->Text(0, "ENDTAB");

  BeginTable("UCS", kCoordinateSystems, 0, groups);
  groups->Text(0, "ENDTAB");
  BeginTable("APPID", kApplications, 1, groups);
  AddEntry("APPID", "AcDbRegAppTableRecord", "ACAD", kApplications, kApplication, groups);
  groups->Text(0, "ENDTAB");
  BeginTable("DIMSTYLE", kDimensionStyles, 1, groups);
  groups->Text(100, "AcDbDimStyleTable");
  AddEntry("DIMSTYLE", "AcDbDimStyleTableRecord", "Standard", kDimensionStyles, kDimensionStyle, groups);
  groups->Handle(340, kStyle).Text(0, "ENDTAB");
}

}  // namespace

std::string DxfDashName(size_t index) { return "DASHED-" + std::to_string(index + 1); }

void AddDxfColour(Colour colour, DxfGroupText* groups) {
  constexpr int kDark = 0x40;
  constexpr int kOpposite = 7;
  constexpr std::array<Colour, 9> kNumbered = {0xFF0000, 0xFFFF00, 0x00FF00, 0x00FFFF, 0x0000FF,
                                               0xFF00FF, 0xFFFFFF, 0x808080, 0xC0C0C0};
  const auto part = [](Colour c, int shift) { return static_cast<int>(c >> shift & 0xFF); };
  if (std::max({part(colour, 16), part(colour, 8), part(colour, 0)}) < kDark) {
    groups->Integer(62, kOpposite);
    return;
  }
  const auto distance = [&](Colour c) {
    int sum = 0;
    for (const int shift : {0, 8, 16}) {
      const int difference = part(c, shift) - part(colour, shift);
      sum += difference * difference;
    }
    return sum;
  };
  const auto nearest = std::min_element(kNumbered.begin(), kNumbered.end(),
                                        [&](Colour a, Colour b) { return distance(a) < distance(b); });
  groups->Integer(62, nearest - kNumbered.begin() + 1).Integer(420, colour);
}

std::string DxfHead(const DxfContents& contents) {
  DxfContents all = contents;
  all.next_handle +=
      static_cast<long long>(contents.dashes.size() + contents.layers.size() + contents.views.size());
  for (Interval* extent : {&all.x, &all.y})
    if (extent->low > extent->high) *extent = {0, 0};
  DxfGroupText groups;
  AddHeader(all, &groups);
  AddTables(all, contents.next_handle, &groups);
  groups.Lines(kBlocks);
  return groups.Bytes();
}

std::string DxfTail() {
  DxfGroupText groups;
  groups.Lines(kObjects);
  AddLayout(0xF, "Model", 0, 1712, kDxfModelSpace, &groups);
  AddLayout(0x10, "Layout1", 1, 688, kDxfModelSpace + 1, &groups);
  groups.Lines("0 ENDSEC\n0 EOF\n");
  return groups.Bytes();
}

}  // namespace velmora::drawing
