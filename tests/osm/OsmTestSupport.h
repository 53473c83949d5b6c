// Small OpenStreetMap extracts written by the tests, and a session to import them into.
#pragma once

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include <unistd.h>

#include "core/Session.h"
#include "core/Stores.h"
#include "osm/OsmImport.h"

namespace fw::test {

constexpr double kLat = 48.35;
constexpr double kLon = 11.78;

// An extract in OSM XML; node ids from 1, way ids from 100, relation ids from 1000.
class OsmXml {
public:
    using Tags = std::map<std::string, std::string>;

    long node(double lat, double lon, const Tags& tags = {})
    {
        char head[128];
        std::snprintf(head, sizeof head, "<node id=\"%ld\" version=\"1\" lat=\"%.7f\" lon=\"%.7f\">\n", nextNode_, lat,
                      lon);
        nodes_ += head + TagLines(tags) + "</node>\n";
        return nextNode_++;
    }
    long way(const std::vector<long>& nodes, const Tags& tags)
    {
        std::string refs;
        for (long n : nodes)
            refs += "<nd ref=\"" + std::to_string(n) + "\"/>\n";
        ways_ += "<way id=\"" + std::to_string(nextWay_) + "\" version=\"1\">\n" + refs + TagLines(tags) + "</way>\n";
        return nextWay_++;
    }
    long multipolygon(const std::vector<std::pair<long, std::string>>& ways, Tags tags)
    {
        tags["type"] = "multipolygon";
        std::string members;
        for (const auto& [w, role] : ways)
            members += "<member type=\"way\" ref=\"" + std::to_string(w) + "\" role=\"" + role + "\"/>\n";
        relations_ += "<relation id=\"" + std::to_string(nextRelation_) + "\" version=\"1\">\n" + members +
                      TagLines(tags) + "</relation>\n";
        return nextRelation_++;
    }
    // Nodes first, then ways, then relations, as the format has them.
    std::string text() const
    {
        return "<?xml version='1.0' encoding='UTF-8'?>\n<osm version=\"0.6\" generator=\"test\">\n" + nodes_ +
               ways_ + relations_ + "</osm>\n";
    }

private:
    static std::string TagLines(const Tags& tags)
    {
        std::string lines;
        for (const auto& [k, v] : tags)
            lines += "<tag k=\"" + k + "\" v=\"" + v + "\"/>\n";
        return lines;
    }

    std::string nodes_, ways_, relations_;
    long nextNode_ = 1, nextWay_ = 100, nextRelation_ = 1000;
};

// Nodes placed by metres east and north of the reference point.
struct Plan {
    OsmXml xml;
    WorldFrame frame = MakeWorldFrame(kLat, kLon);
    long at(double east, double north, const OsmXml::Tags& tags = {})
    {
        return xml.node(kLat + north * frame.LatDegPerMetre, kLon + east * frame.LonDegPerMetre, tags);
    }
};

// A folder of its own under the system's temporary folder, gone after the test.
class Scratch {
public:
    Scratch()
    {
        std::string tmpl = (std::filesystem::temp_directory_path() / "fw-osm-XXXXXX").string();
        root_ = ::mkdtemp(tmpl.data()) ? tmpl : std::string();
    }
    ~Scratch()
    {
        std::error_code ec;
        std::filesystem::remove_all(root_, ec);
    }
    std::string path(const std::string& name) const { return root_ + "/" + name; }
    // Writes text to name and gives its path.
    std::string write(const std::string& name, const std::string& text) const
    {
        std::ofstream(path(name), std::ios::binary) << text;
        return path(name);
    }

private:
    std::string root_;
};

inline void NewSession(Session& s, double lat = 0, double lon = 0)
{
    ResetAtStart(s);
    s.programFolder = FW_PROGRAM_DIR;
    ResetConfig(s.config, s.programFolder);
    ClearStores(s.stores);
    s.project.LatitudeDegree = lat;
    s.project.LongitudeDegree = lon;
}

// Writes the extract and imports it into a new session with the given reference point.
inline OsmImportResult Import(Session& s, const OsmXml& xml, double lat = kLat, double lon = kLon,
                              const OsmImportOptions& options = {})
{
    Scratch dir;
    NewSession(s, lat, lon);
    return ImportOsm(s, dir.write("extract.osm", xml.text()), options);
}

} // namespace fw::test
