#include "TagForms.h"

#include <QHash>

namespace TagForms {

namespace {

struct Row
{
    const char *tag;
    Form form;
    const char *takes;
    QStringList children;
};

const QHash<QString, Entry> &table()
{
    static const QHash<QString, Entry> entries = [] {
        const Row rows[] = {
            // Tags every control reads.
            {"Rect", Rect, "x, y, width, height in design pixels; optional fixed and expand holding width and/or height", {}},
            {"Focus", Text, "none, strong or tab", {}},
            {"Layout", Text, "type=\"grid\" with optional columns, spacing, margin", {}},
            {"Font", Text, "optional family, bold, italic (or the family as text)", {}},
            {"FontSize", Number, "points at 96 dpi, scaled by the zoom", {}},
            {"Address", Address, "one parameter: prmAddr and the other keys, as attributes or child elements", {QStringLiteral("*")}},
            {"AddressList", AddressList, "Address children, in index order", {QStringLiteral("Address")}},
            {"DragEnabled", Boolean, "true: the control can be dragged out as a parameter reference", {}},
            {"BaseAddress", Address, "keys the control's addresses are completed from", {QStringLiteral("*")}},
            {"ReplaceParameterName", Text, "the name shown instead of the parameter's", {}},
            {"VisibleParameterName", Boolean, "whether the parameter name is shown (default true)", {}},
            {"ContextMenuVisible", Boolean, "whether the right-click menu is offered (default true)", {}},
            {"FindKey", Text, "the key the host's search finds the control by", {}},
            {"RemoteControlList", Children, "one child element per entry, or a comma-separated text", {QStringLiteral("*")}},
            {"TabOrder", Whole, "the control's place in the tab order", {}},
            {"FrontFocus", Boolean, "true: the control takes the focus when the panel opens", {}},

            // Addressing variants.
            {"ChNum", Address, "the channel selector's address (optional range, offset), or a fixed number", {QStringLiteral("*")}},
            {"BandNum", Address, "the band selector's address (optional range, offset), or a fixed number", {QStringLiteral("*")}},
            {"Zone", Text, "the tuning zone's id", {}},
            {"ModelToBaseAddressMap", Children, "Model name=\"MODEL\" children holding a base address, and the model parameter's Address (or connect_port_inedx, with extdev_speaker_ports, for the loudspeaker connected at a port)", {QStringLiteral("Model"), QStringLiteral("Address")}},
            {"ModelToBaseAddressMap/Model", Text, "the base address for the model named by name", {}},
            {"ModelToBaseAddressMap/Address", Address, "the loudspeaker-model parameter", {QStringLiteral("*")}},
            {"DEFAULT", Text, "the base address for unlisted models", {}},
            {"BaseAddressList", Children, "one base address per child element", {QStringLiteral("*")}},
            {"ChannelSelectAddress", Address, "the selector of the base address list's index", {QStringLiteral("*")}},
            {"AddressIndexY", Whole, "the {indexY} placeholder's value", {}},
            {"AddressForm", Address, "the address template, with {x} and {y}", {QStringLiteral("*")}},
            {"AddressFormANC", Address, "the address template, with {x} and {y}", {QStringLiteral("*")}},
            {"XIndex", Whole, "the cell's column, {x}", {}},
            {"YIndex", Whole, "the cell's row, {y}", {}},
            {"range", Whole16, "the number of steps the position is read on", {}},
            {"RejectValue", Text, "comma-separated values that disable the control", {}},
            {"HideValue", Text, "comma-separated values that hide the control", {}},
            {"StrValFlg", Boolean, "true: compare the display text instead of the step", {}},

            // Colours.
            {"BackgroundColor", Colour, "the background colour", {}},
            {"BeamColor", Colour, "the beam's colour", {}},
            {"PointerColor", Colour, "the pointer's colour", {}},
            {"BorderColor", Colour, "the border's colour", {}},
            {"Color", Colour, "the colour", {}},
            {"DefaultColor", Colour, "the colour without a value", {}},
            {"FillColor", Colour, "the fill colour", {}},
            {"FrameColor", Colour, "the frame's colour", {}},
            {"GridColor", Colour, "the grid lines' colour", {}},
            {"HandleColor", Colour, "the handle's colour", {}},
            {"LineColor", Colour, "the line's colour", {}},
            {"OffColor", Colour, "the colour when off", {}},
            {"OnColor", Colour, "the colour when on", {}},
            {"RailColor", Colour, "the rail's colour", {}},
            {"SelectedColor", Colour, "the selection's colour", {}},
            {"SelectedTextColor", Colour, "the selected text's colour", {}},
            {"TextColor", Colour, "the text colour", {}},
            {"ColorList", Children, "one Color per step, from position 0 upwards", {QStringLiteral("Color")}},
            {"ColorList/Color", Colour, "the colour of one step", {}},

            // Images and pages.
            {"Image", Image, "an image file name (type=\"knob\" or \"base\" on faders)", {}},
            {"Icon", Image, "an image file name", {}},
            {"OnImage", Image, "an image file name, shown when on", {}},
            {"OffImage", Image, "an image file name, shown when off", {}},
            {"ImageList", Children, "one Image per step, from position 0 upwards; optional range", {QStringLiteral("Image")}},
            {"ImageList/Image", Image, "an image file name", {}},
            {"StackList", Children, "Page children; attributes range, divide, value, default, preload, hint, file", {QStringLiteral("Page")}},
            {"StackList/Page", Controls, "a page keyed by key: a panel file (file), a whole Panel, or Widget elements", {QStringLiteral("Widget"), QStringLiteral("Panel")}},
            {"Page/Panel", Controls, "a whole panel: Widget elements", {QStringLiteral("Widget")}},
            {"Panel", Controls, "a whole panel: Widget elements, or a panel file (file)", {QStringLiteral("Widget")}},
            {"File", PanelFile, "a panel file name", {}},

            // Geometry and numbers.
            {"ControlRect", Rect, "the handle's area", {}},
            {"RailRect", Rect, "the rail", {}},
            {"Round", Rect, "the dial's face", {}},
            {"KnobPosition", Point, "x, y (or x,y)", {}},
            {"KnobSize", Size, "width, height (or w,h)", {}},
            {"CellSize", Size, "width, height of one cell", {}},
            {"Indicator", Children, "Color, Start, Width and Rect of the dial's pointer", {QStringLiteral("Color"), QStringLiteral("Start"), QStringLiteral("Width"), QStringLiteral("Rect")}},
            {"Indicator/Color", Colour, "the pointer's colour", {}},
            {"Indicator/Start", Whole16, "where the pointer starts, 0 to 300", {}},
            {"Indicator/Width", Whole16, "the pointer's width", {}},
            {"Indicator/Rect", Rect, "the pointer's area", {}},
            {"LevelList", Children, "Level children: text (menu label), the value sent, optional position (0 to 1) or at (a value text)", {QStringLiteral("Level")}},
            {"LevelList/Level", Text, "the value sent; text is the label, position (0 to 1) or at (a value text) draws a mark", {}},
            {"Items", Children, "Item children: the label, optional value", {QStringLiteral("Item")}},
            {"Items/Item", Text, "a label; value is what is sent (default the label)", {}},
            {"ValueTextList", Children, "Item children, or the texts separated by commas", {QStringLiteral("Item")}},
            {"ValueTextList/Item", Text, "a text", {}},
            {"ValueTextItems", Children, "Item value=\"X\" children: the text shown for X", {QStringLiteral("Item")}},
            {"ValueTextItems/Item", Text, "the text shown for the value named by value", {}},
            {"Marks", NumberList, "values separated by commas", {}},
            {"Angle", Number, "an angle in degrees", {}},
            {"BeamWidth", Whole, "the beam's width in degrees, 1 to 180", {}},
            {"Depth", Whole, "design pixels between two layers, 0 to 200", {}},
            {"EditorID", Text, "the editor the button opens in a window of its own: a panel file, or the name of its inline Panel", {}},
            {"Title", Text, "the title of the window the button opens", {}},
            {"Bottom", Number, "the lowest value", {}},
            {"Top", Number, "the highest value", {}},
            {"Left", Number, "the lowest value", {}},
            {"Right", Number, "the highest value", {}},
            {"MinValue", Number, "the lowest value", {}},
            {"MaxValue", Number, "the highest value", {}},
            {"Step", Number, "the step", {}},
            {"Threshold", NumberList, "threshold values separated by commas", {}},
            {"BorderWidth", Whole, "design pixels", {}},
            {"FrameWidth", Whole, "design pixels", {}},
            {"HeaderSize", Whole, "design pixels", {}},
            {"PadLeft", Whole, "design pixels", {}},
            {"XOffset", Whole, "design pixels", {}},
            {"YOffset", Whole, "design pixels", {}},
            {"Rows", Whole, "the number of rows", {}},
            {"Columns", Whole, "the number of columns", {}},
            {"MaxLength", Whole, "bytes, 0 for no limit", {}},

            // Switches.
            {"BuiltInBar", Boolean, "true: without a usable image the built-in bar is drawn; otherwise nothing", {}},
            {"CanOff", BooleanAnyCase, "true: a second click turns the selection off", {}},
            {"EnableHorizontalDrag", Boolean, "true: a horizontal drag changes the value too", {}},
            {"FillLevel", Boolean, "true: the rail below the knob is filled", {}},
            {"ReadOnly", BooleanAnyCase, "true: display only", {}},
            {"Reverse", BooleanAnyCase, "true: on and off swap", {}},
            {"SpaceDelete", Boolean, "true: blanks are removed from the text", {}},
            {"Stretch", BooleanAnyCase, "true: the image fills the control", {}},
            {"WithButton", Boolean, "true: a button at the right end", {}},

            // Texts.
            {"Align", Text, "the side the labels are drawn on", {}},
            {"ColumnLabels", Text, "labels separated by commas", {}},
            {"RowLabels", Text, "labels separated by commas", {}},
            {"Direction", Text, "the direction", {}},
            {"DisableValue", Text, "comma-separated values that disable the region", {}},
            {"FixedScale", Text, "ms, meter, feet, sample or frame", {}},
            {"FlrToTalk", Text, "the floor-to-talker height", {}},
            {"InputType", Text, "Number:4, Number:32, Alphabet+Number, IP+Alphabet+Number", {}},
            {"IntroText", Text, "a text shown before the value", {}},
            {"MasterType", Text, "the master's type", {}},
            {"MatchValue", Text, "the value the button shows as on", {}},
            {"Mode", Text, "Meter or Feet", {}},
            {"OnText", Text, "the text when on", {}},
            {"Orientation", Text, "Horizontal or Vertical", {}},
            {"ParameterType", Text, "normal, 0dB or 10dB", {}},
            {"ReturnValue", Text, "the value sent", {}},
            {"Scale", Text, "log or linear", {}},
            {"Shape", Text, "the lamp's shape", {}},
            {"Side", Text, "the side the marks are drawn on", {}},
            {"Target", Text, "the name of the control it enables", {}},
            {"Text", Text, "a text", {}},
            {"TextAlignment", Text, "Left, Right, HCenter, Top, Bottom, VCenter", {}},
            {"TextDirection", Text, "Upward or Downward", {}},
            {"Unit", Text, "the unit", {}},
            {"unit", Text, "the unit shown after the value", {}},
            {"Value", Text, "the value", {}},
            {"ValueText", Text, "the text shown for the display text named by value", {}},
        };
        QHash<QString, Entry> h;
        for (const Row &row : rows)
            h.insert(QLatin1String(row.tag), Entry{row.form, QLatin1String(row.takes), row.children});
        return h;
    }();
    return entries;
}

} // namespace

const Entry *find(const QString &tag, const QString &parent)
{
    const QHash<QString, Entry> &t = table();
    // A child without an entry of its own takes what the tag takes at the top.
    auto it = parent.isEmpty() ? t.cend() : t.constFind(parent + QLatin1Char('/') + tag);
    if (it == t.cend())
        it = t.constFind(tag);
    return it == t.cend() ? nullptr : &*it;
}

QStringList tags()
{
    QStringList all;
    for (auto it = table().cbegin(); it != table().cend(); ++it) {
        if (!it.key().contains(QLatin1Char('/')))
            all << it.key();
    }
    all.sort();
    return all;
}

QString formName(Form form)
{
    switch (form) {
    case Text: return QStringLiteral("text");
    case Boolean: return QStringLiteral("boolean (exactly true)");
    case BooleanAnyCase: return QStringLiteral("boolean (true in any case)");
    case Whole: return QStringLiteral("whole number");
    case Whole16: return QStringLiteral("whole number (16 bits)");
    case Number: return QStringLiteral("number");
    case NumberList: return QStringLiteral("numbers");
    case Position: return QStringLiteral("position (0 to 1)");
    case Colour: return QStringLiteral("colour R,G,B[,A]");
    case Rect: return QStringLiteral("rectangle");
    case Point: return QStringLiteral("point");
    case Size: return QStringLiteral("size");
    case Image: return QStringLiteral("image file");
    case PanelFile: return QStringLiteral("panel file");
    case Address: return QStringLiteral("address");
    case AddressList: return QStringLiteral("address list");
    case Children: return QStringLiteral("child elements");
    case Controls: return QStringLiteral("controls");
    }
    return QString();
}

} // namespace TagForms
