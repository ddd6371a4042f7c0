// The code tables of the sorting dictionary and the names that they have in the INF file. The dictionary
// holds row numbers. Rows that share a name do so on purpose.
#pragma once

#include <QtGlobal>

#include <iterator>

/// Voltage levels, kV.
inline constexpr quint32 gst_vl[13] = {6, 10, 15, 20, 35, 60, 110, 220, 330, 400, 500, 750, 1150};

/// Equipment groups: codes and names.
inline constexpr const char* gst_eg[8] = {"L", "BPR", "AT", "T", "G", "BCT", "VTB", "CB"};
inline constexpr const char* gst_egnames[8] = {
    "Line",      "Shunt_Reactor", "Power_Transformer", "Power_Transformer",
    "Generator", "Breaker",       "Busbar_Section",    "Capacitor_Bank"};

/// Signal groups of analog channels: codes.
inline constexpr const char* gst_sg[15] = {"VT",       "CT",     "PR_REC",  "PR_BB",    "PR_DIFF1",
                                           "PR_DIFF2", "F",      "PR_RC",   "PR_RV",    "PR_RVG",
                                           "PR_IEX",   "PR_VEX", "DCS_VPP", "DCS_VP1G", "DCS_VP2G"};

// Rows of gst_sg at which the family of INF keys changes.
inline constexpr quint32 SignalGroupVT = 0;
inline constexpr quint32 SignalGroupCT = 1;
inline constexpr quint32 SignalGroupRPFirst = 2;
inline constexpr quint32 SignalGroupF = 6;
inline constexpr quint32 SignalGroupESFirst = 7;
inline constexpr quint32 SignalGroupOCSFirst = 12;
inline constexpr quint32 SignalGroupLast = 14;

/// Device groups of discrete channels: codes and names.
inline constexpr const char* gst_dg[7] = {"RP", "NA", "EA", "TA", "FR", "FL", "OC"};
inline constexpr const char* gst_dgnames[7] = {"Relay_Protection",
                                               "Control_Automation",
                                               "Emergency_Control_Automation",
                                               "Operation_Control_Automation",
                                               "Digital_Fault_Recorder",
                                               "Fault_Recorder",
                                               "Operating_Current_System"};

/// Status types of discrete channels: codes and names.
inline constexpr const char* gst_st[20] = {"FD", "ID", "AL",  "OR",   "SS",   "FI",  "FE",
                                           "TS", "MS", "SBO", "SBC",  "AB",   "NAB", "SA",
                                           "FA", "VP", "VPG", "ODC1", "ODC2", "ODC3"};
inline constexpr const char* gst_stnames[20] = {"Tripping",
                                                "Starting",
                                                "Logic",
                                                "Output_Relay",
                                                "Switching_Status",
                                                "Device_Failure",
                                                "Failure_External",
                                                "Test",
                                                "Manual_Start",
                                                "Status_Breaker",
                                                "Status_Breaker",
                                                "Availability_Breaker",
                                                "Non-availability",
                                                "Warning_Fault_Signaling",
                                                "Fault_Signaling",
                                                "Starting",
                                                "Starting",
                                                "Protection_Outage",
                                                "Protection_Outage",
                                                "Protection_Outage"};

static_assert(std::size(gst_eg) == std::size(gst_egnames), "one name a code");
static_assert(std::size(gst_dg) == std::size(gst_dgnames), "one name a code");
static_assert(std::size(gst_st) == std::size(gst_stnames), "one name a code");
static_assert(std::size(gst_sg) == SignalGroupLast + 1, "the families cover all signal groups");
