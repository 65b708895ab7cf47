#ifndef CORVANE_PARAMETERKEYS_H
#define CORVANE_PARAMETERKEYS_H

#include <QLatin1String>

/*
    A QLatin1String of a string literal, usable in constant expressions.
    QLatin1String(const char *) measures with strlen, which only some
    compilers evaluate at compile time; the literal's size is known.
*/
template <int N>
constexpr QLatin1String latin1Literal(const char (&text)[N])
{
    return QLatin1String(text, N - 1);
}

/*
    The key vocabulary of property maps, requests and database queries.
    Every class refers to these constants; none spells a key itself.
*/
namespace Key {

// Device and address.
constexpr QLatin1String dev_model = latin1Literal("dev_model");
constexpr QLatin1String dev_uniq_id = latin1Literal("dev_uniq_id");
constexpr QLatin1String zone_uniq_id = latin1Literal("zone_uniq_id");
constexpr QLatin1String prmAddr = latin1Literal("prmAddr");
constexpr QLatin1String cptName = latin1Literal("cptName");
constexpr QLatin1String orv_address = latin1Literal("orv_address");
constexpr QLatin1String cptOrvName = latin1Literal("cptOrvName");
constexpr QLatin1String DelayScale = latin1Literal("DelayScale");
// The role of a control's address that is not its own parameter (a selector).
constexpr QLatin1String AddrType = latin1Literal("AddrType");

// Requests from the user interface.
constexpr QLatin1String ui_prm_val = latin1Literal("ui_prm_val");
constexpr QLatin1String ui_prm_str = latin1Literal("ui_prm_str");
constexpr QLatin1String ui_prm_step = latin1Literal("ui_prm_step");
constexpr QLatin1String ui_prm_prak = latin1Literal("ui_prm_prak");
constexpr QLatin1String ui_prm_def_val = latin1Literal("ui_prm_def_val");
constexpr QLatin1String ui_prm_option = latin1Literal("ui_prm_option");
constexpr QLatin1String set_prm_type = latin1Literal("set_prm_type");

// Parameter fields.
constexpr QLatin1String prmValue = latin1Literal("prmValue");
constexpr QLatin1String d_prmValue = latin1Literal("d:prmValue");
constexpr QLatin1String prmRatio = latin1Literal("prmRatio");
constexpr QLatin1String prmIncDec = latin1Literal("prmIncDec");
constexpr QLatin1String prmType = latin1Literal("prmType");
constexpr QLatin1String prmFlag = latin1Literal("prmFlag");
constexpr QLatin1String prmStr = latin1Literal("prmStr");
constexpr QLatin1String prmMax = latin1Literal("prmMax");
constexpr QLatin1String prmMin = latin1Literal("prmMin");
constexpr QLatin1String prmUnit = latin1Literal("prmUnit");
constexpr QLatin1String prmScale = latin1Literal("prmScale");
constexpr QLatin1String d_data = latin1Literal("d:data");

// Widget properties.
constexpr QLatin1String kind = latin1Literal("kind");
constexpr QLatin1String meterID = latin1Literal("meterID");
constexpr QLatin1String dragMode = latin1Literal("dragMode");
constexpr QLatin1String reverse = latin1Literal("reverse");
constexpr QLatin1String unit = latin1Literal("unit");
constexpr QLatin1String nominal = latin1Literal("nominal");
constexpr QLatin1String changeUnit = latin1Literal("changeUnit");
constexpr QLatin1String rangeControl = latin1Literal("rangeControl");
constexpr QLatin1String range = latin1Literal("range");

// Drag, link and value fields.
constexpr QLatin1String startX = latin1Literal("startX");
constexpr QLatin1String startY = latin1Literal("startY");
constexpr QLatin1String endX = latin1Literal("endX");
constexpr QLatin1String endY = latin1Literal("endY");
constexpr QLatin1String delimita = latin1Literal("delimita");
constexpr QLatin1String temporaryLink = latin1Literal("temporaryLink");
constexpr QLatin1String index = latin1Literal("index");
constexpr QLatin1String value = latin1Literal("value");
constexpr QLatin1String peak = latin1Literal("peak");

// Meter entries.
constexpr QLatin1String level = latin1Literal("level");
constexpr QLatin1String gr = latin1Literal("gr");
constexpr QLatin1String raw = latin1Literal("raw");
constexpr QLatin1String atmix_gain = latin1Literal("atmix_gain");
constexpr QLatin1String atmix_level = latin1Literal("atmix_level");
constexpr QLatin1String aec = latin1Literal("aec");

// Host editor information.
constexpr QLatin1String editor_info = latin1Literal("editor_info");
constexpr QLatin1String editor_hint = latin1Literal("editor_hint");
constexpr QLatin1String editor_auto = latin1Literal("editor_auto");

} // namespace Key

/*
    Members of the JSON parameter and device records. Kept apart
    from Key so that short names such as "x" and "y" stay out of the way of
    code that says "using namespace Key".
*/
namespace RecordKey {

constexpr QLatin1String parameter = latin1Literal("parameter");
constexpr QLatin1String category = latin1Literal("category");
constexpr QLatin1String componentname = latin1Literal("componentname");
constexpr QLatin1String componentlabel = latin1Literal("componentlabel");
constexpr QLatin1String memno = latin1Literal("memno");
constexpr QLatin1String componentid = latin1Literal("componentid");
constexpr QLatin1String elementno = latin1Literal("elementno");
constexpr QLatin1String x = latin1Literal("x");
constexpr QLatin1String y = latin1Literal("y");
constexpr QLatin1String paramno = latin1Literal("paramno");
constexpr QLatin1String index = latin1Literal("index");
constexpr QLatin1String model = latin1Literal("model");
constexpr QLatin1String identifier = latin1Literal("identifier");
constexpr QLatin1String widget = latin1Literal("widget");
constexpr QLatin1String device = latin1Literal("device");
constexpr QLatin1String paramname = latin1Literal("paramname");
constexpr QLatin1String address = latin1Literal("address");
constexpr QLatin1String meter = latin1Literal("meter");
constexpr QLatin1String meterid = latin1Literal("meterid");
constexpr QLatin1String snapshot = latin1Literal("snapshot");

} // namespace RecordKey

/*
    The fixed textual parameter addresses the library itself uses,
    and the "DelayScale" units that select a delay-time address.
*/
namespace FixedAddress {

constexpr QLatin1String desiredFs = latin1Literal("Setup/0/Config/DesiredFs:0:0");
constexpr QLatin1String desiredFsComponent = latin1Literal("Setup:1:1x1");
constexpr QLatin1String delayTimeMs = latin1Literal("Ch/Delay/Time");
constexpr QLatin1String delayTimeMeter = latin1Literal("Ch/Delay/Time_m");
constexpr QLatin1String delayTimeFeet = latin1Literal("Ch/Delay/Time_ft");
constexpr QLatin1String wordclockFs = latin1Literal("IO:Current/Dev/Wordclock/Fs=0/0/0");
constexpr QLatin1String analogOutFrame = latin1Literal("Lumen:Analog/OutCh/Frame=0/0/0");
constexpr QLatin1String micGainType = latin1Literal("Cinder:DSPTOP/MicGaintype");

} // namespace FixedAddress

namespace DelayUnit {

constexpr QLatin1String ms = latin1Literal("ms");
constexpr QLatin1String meter = latin1Literal("meter");
constexpr QLatin1String feet = latin1Literal("feet");
constexpr QLatin1String sample = latin1Literal("sample");
constexpr QLatin1String frame = latin1Literal("frame");

} // namespace DelayUnit

#endif
