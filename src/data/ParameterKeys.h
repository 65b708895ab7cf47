#ifndef CORVANE_PARAMETERKEYS_H
#define CORVANE_PARAMETERKEYS_H

#include <QLatin1String>

/*
    The key vocabulary of property maps, requests and database queries.
    Every class refers to these constants; none spells a key itself.
*/
namespace Key {

// Device and address.
constexpr QLatin1String dev_model("dev_model");
constexpr QLatin1String dev_uniq_id("dev_uniq_id");
constexpr QLatin1String zone_uniq_id("zone_uniq_id");
constexpr QLatin1String prmAddr("prmAddr");
constexpr QLatin1String cptName("cptName");
constexpr QLatin1String orv_address("orv_address");
constexpr QLatin1String cptOrvName("cptOrvName");
constexpr QLatin1String DelayScale("DelayScale");
// The role of a control's address that is not its own parameter (a selector).
constexpr QLatin1String AddrType("AddrType");

// Requests from the user interface.
constexpr QLatin1String ui_prm_val("ui_prm_val");
constexpr QLatin1String ui_prm_str("ui_prm_str");
constexpr QLatin1String ui_prm_step("ui_prm_step");
constexpr QLatin1String ui_prm_prak("ui_prm_prak");
constexpr QLatin1String ui_prm_def_val("ui_prm_def_val");
constexpr QLatin1String ui_prm_option("ui_prm_option");
constexpr QLatin1String set_prm_type("set_prm_type");

// Parameter fields.
constexpr QLatin1String prmValue("prmValue");
constexpr QLatin1String d_prmValue("d:prmValue");
constexpr QLatin1String prmRatio("prmRatio");
constexpr QLatin1String prmIncDec("prmIncDec");
constexpr QLatin1String prmType("prmType");
constexpr QLatin1String prmFlag("prmFlag");
constexpr QLatin1String prmStr("prmStr");
constexpr QLatin1String prmMax("prmMax");
constexpr QLatin1String prmMin("prmMin");
constexpr QLatin1String prmUnit("prmUnit");
constexpr QLatin1String prmScale("prmScale");
constexpr QLatin1String d_data("d:data");

// Widget properties.
constexpr QLatin1String kind("kind");
constexpr QLatin1String meterID("meterID");
constexpr QLatin1String dragMode("dragMode");
constexpr QLatin1String reverse("reverse");
constexpr QLatin1String unit("unit");
constexpr QLatin1String nominal("nominal");
constexpr QLatin1String changeUnit("changeUnit");
constexpr QLatin1String rangeControl("rangeControl");
constexpr QLatin1String range("range");

// Drag, link and value fields.
constexpr QLatin1String startX("startX");
constexpr QLatin1String startY("startY");
constexpr QLatin1String endX("endX");
constexpr QLatin1String endY("endY");
constexpr QLatin1String delimita("delimita");
constexpr QLatin1String temporaryLink("temporaryLink");
constexpr QLatin1String index("index");
constexpr QLatin1String value("value");
constexpr QLatin1String peak("peak");

// Meter entries.
constexpr QLatin1String level("level");
constexpr QLatin1String gr("gr");
constexpr QLatin1String raw("raw");
constexpr QLatin1String atmix_gain("atmix_gain");
constexpr QLatin1String atmix_level("atmix_level");
constexpr QLatin1String aec("aec");

// Host editor information.
constexpr QLatin1String editor_info("editor_info");
constexpr QLatin1String editor_hint("editor_hint");
constexpr QLatin1String editor_auto("editor_auto");

} // namespace Key

/*
    Members of the JSON parameter and device records. Kept apart
    from Key so that short names such as "x" and "y" stay out of the way of
    code that says "using namespace Key".
*/
namespace RecordKey {

constexpr QLatin1String parameter("parameter");
constexpr QLatin1String category("category");
constexpr QLatin1String componentname("componentname");
constexpr QLatin1String componentlabel("componentlabel");
constexpr QLatin1String memno("memno");
constexpr QLatin1String componentid("componentid");
constexpr QLatin1String elementno("elementno");
constexpr QLatin1String x("x");
constexpr QLatin1String y("y");
constexpr QLatin1String paramno("paramno");
constexpr QLatin1String index("index");
constexpr QLatin1String model("model");
constexpr QLatin1String identifier("identifier");
constexpr QLatin1String widget("widget");
constexpr QLatin1String device("device");
constexpr QLatin1String paramname("paramname");
constexpr QLatin1String address("address");
constexpr QLatin1String meter("meter");
constexpr QLatin1String meterid("meterid");
constexpr QLatin1String snapshot("snapshot");

} // namespace RecordKey

/*
    The fixed textual parameter addresses the library itself uses,
    and the "DelayScale" units that select a delay-time address.
*/
namespace FixedAddress {

constexpr QLatin1String desiredFs("Setup/0/Config/DesiredFs:0:0");
constexpr QLatin1String desiredFsComponent("Setup:1:1x1");
constexpr QLatin1String delayTimeMs("Ch/Delay/Time");
constexpr QLatin1String delayTimeMeter("Ch/Delay/Time_m");
constexpr QLatin1String delayTimeFeet("Ch/Delay/Time_ft");
constexpr QLatin1String wordclockFs("IO:Current/Dev/Wordclock/Fs=0/0/0");
constexpr QLatin1String analogOutFrame("Lumen:Analog/OutCh/Frame=0/0/0");
constexpr QLatin1String micGainType("Cinder:DSPTOP/MicGaintype");

} // namespace FixedAddress

namespace DelayUnit {

constexpr QLatin1String ms("ms");
constexpr QLatin1String meter("meter");
constexpr QLatin1String feet("feet");
constexpr QLatin1String sample("sample");
constexpr QLatin1String frame("frame");

} // namespace DelayUnit

#endif
