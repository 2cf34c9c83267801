#include "examples/faces/Report.h"

#include <algorithm>
#include <cstdio>
#include <iomanip>
#include <sstream>

#include "examples/faces/SvgWriter.h"

namespace faces {
namespace {

constexpr std::size_t MaxListed = 50;

const char* NameOf(ChangeKind kind) {
    switch (kind) {
        case ChangeKind::Crossing:
            return "crossing";
        case ChangeKind::Overlap:
            return "overlap";
        case ChangeKind::Touch:
            return "touch";
        case ChangeKind::Near:
            return "near miss";
    }
    return "";
}

const char* NameOf(RingLoss reason) {
    switch (reason) {
        case RingLoss::Collapsed:
            return "collapses on the grid";
        case RingLoss::TouchesItself:
            return "touches itself on the grid";
        case RingLoss::Parted:
            return "is parted by other borders";
    }
    return "";
}

std::string Decimal(double d) {
    std::ostringstream out;
    out << std::setprecision(10) << d;
    return out.str();
}

class Table {
public:
    explicit Table(std::ostream& out) : m_out(out) {}

    void Row(const char* pszLabel, const std::string& strValue, const std::string& strNote = "") {
        m_out << "  " << std::left << std::setw(18) << pszLabel << std::right << std::setw(14) << strValue;
        if (!strNote.empty()) m_out << "   " << strNote;
        m_out << '\n';
    }
    void Row(const char* pszLabel, long nValue, const std::string& strNote = "") {
        Row(pszLabel, WithCommas(nValue), strNote);
    }

private:
    std::ostream& m_out;
};

std::string NotesOnNoding(const std::vector<ChangedPlace>& places) {
    if (places.empty()) return "";
    std::string strNotes;
    for (const ChangeKind kind :
         {ChangeKind::Crossing, ChangeKind::Overlap, ChangeKind::Touch, ChangeKind::Near}) {
        const auto isOfKind = [kind](const ChangedPlace& place) { return place.m_kind == kind; };
        const long nPlaces = std::count_if(places.begin(), places.end(), isOfKind);
        if (nPlaces > 0) strNotes += std::string(", ") + NameOf(kind) + ": " + WithCommas(nPlaces);
    }
    return "places: " + WithCommas(static_cast<long>(places.size())) + strNotes;
}

void PrintLostRings(std::ostream& out, const std::vector<LostRing>& lost, bool bVerbose) {
    const std::size_t nListed = bVerbose ? lost.size() : std::min(lost.size(), MaxListed);
    for (std::size_t i = 0; i < nListed; ++i) {
        out << "    not found: " << lost[i].m_strName << (lost[i].m_bHole ? ", a hole: it " : ": its ring ")
            << NameOf(lost[i].m_reason) << '\n';
    }
    if (nListed < lost.size()) {
        out << "    and " << WithCommas(static_cast<long>(lost.size() - nListed))
            << " more (--verbose lists them)\n";
    }
}

void PrintTimes(Table& table, const StageTimes& stages) {
    double dTotal = 0;
    for (const auto& [strStage, dTime] : stages) {
        std::ostringstream time;
        time << std::fixed << std::setprecision(1) << dTime << " ms";
        table.Row(strStage.c_str(), time.str());
        dTotal += dTime;
    }
    std::ostringstream total;
    total << std::fixed << std::setprecision(1) << dTotal << " ms";
    table.Row("in all", total.str());
}

}  // namespace

void PrintReport(std::ostream& out, const std::string& strTitle, const Findings& findings, bool bVerbose) {
    const DistinctSegments& distinct = findings.m_distinct;
    const EulerCount euler = findings.m_faceMap.CountForEuler();
    Table table(out);
    out << strTitle << '\n';
    table.Row("segments", static_cast<long>(distinct.m_segments.size()),
              "dropped: " + WithCommas(distinct.m_nDuplicates) + " duplicate, " +
                  WithCommas(distinct.m_nZeroLength) + " of no length");
    table.Row("changed by noding", static_cast<long>(findings.m_noded.m_chains.size()),
              NotesOnNoding(findings.m_places));
    if (bVerbose) {
        for (const ChangedPlace& place : findings.m_places) {
            out << "    " << Describe(place, findings.m_map.m_grid) << '\n';
        }
    }
    table.Row("nodes", static_cast<long>(findings.m_plane.m_nodes.size()));
    table.Row("arcs", static_cast<long>(findings.m_plane.m_arcs.size()));
    table.Row("components", euler.m_nComponents);
    table.Row("dead ends", findings.m_nDeadEnds);
    table.Row("bridges", findings.m_nBridges);
    table.Row("bounded faces", static_cast<long>(findings.m_faceMap.m_faces.size()));
    table.Row("holes", static_cast<long>(findings.m_faceMap.m_holes.size()));
    table.Row("total area", Decimal(0.5 * static_cast<double>(findings.m_faceMap.TwiceTotalArea()) *
                                    findings.m_map.m_grid.CellArea()));
    table.Row("Euler's formula", euler.Holds() ? "holds" : "is violated",
              WithCommas(euler.m_nNodes) + " nodes - " + WithCommas(euler.m_nArcs) + " arcs + " +
                  WithCommas(euler.m_nWalks) + " walks = 2 x " + WithCommas(euler.m_nComponents) +
                  " components");
    if (findings.m_match.m_nRings > 0) {
        table.Row("rings found again", WithCommas(findings.m_match.m_nFound),
                  "of " + WithCommas(findings.m_match.m_nRings));
        PrintLostRings(out, findings.m_match.m_lost, bVerbose);
    }
    PrintTimes(table, findings.m_stages);
}

void PrintSavedReport(std::ostream& out, const std::string& strTitle, const DrawnMap& map,
                      const StageTimes& stages) {
    Table table(out);
    out << strTitle << '\n';
    table.Row("nodes", static_cast<long>(map.m_points.size()));
    table.Row("arcs", static_cast<long>(map.m_arcs.size()));
    table.Row("components", map.m_nComponents);
    table.Row("dead ends", map.CountArcs(ArcKind::DeadEnd));
    table.Row("bridges", map.CountArcs(ArcKind::Bridge));
    table.Row("bounded faces", static_cast<long>(map.m_faces.size()));
    table.Row("holes", map.CountHoles());
    PrintTimes(table, stages);
}

std::string Describe(const ChangedPlace& place, const Grid& grid) {
    std::string strText = std::string(NameOf(place.m_kind)) + " at (" + Decimal(grid.X(place.m_at)) + ", " +
                          Decimal(grid.Y(place.m_at)) + ")";
    const char* pszSeparator = ", on the border of ";
    for (const std::string& strName : place.m_names) {
        strText += pszSeparator + strName;
        pszSeparator = ", ";
    }
    return strText;
}

}  // namespace faces
