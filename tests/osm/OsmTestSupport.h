// Small OpenStreetMap extracts written by the tests, and a session to import them into.
#pragma once

#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include <unistd.h>

#include "core/Session.h"
#include "core/Stores.h"

namespace fw::test {

// An extract in OSM XML; node ids from 1, way ids from 100, relation ids from 1000.
class OsmXml {
public:
    using Tags = std::map<std::string, std::string>;

    long node(double lat, double lon, const Tags& tags = {})
    {
        const long id = nextNode_++;
        char head[160];
        std::snprintf(head, sizeof head, "  <node id=\"%ld\" version=\"1\" lat=\"%.7f\" lon=\"%.7f\"", id, lat, lon);
        body_ += head;
        Close("node", tags);
        return id;
    }
    long way(const std::vector<long>& nodes, const Tags& tags)
    {
        const long id = nextWay_++;
        body_ += "  <way id=\"" + std::to_string(id) + "\" version=\"1\">\n";
        for (long n : nodes)
            body_ += "    <nd ref=\"" + std::to_string(n) + "\"/>\n";
        Tail("way", tags);
        return id;
    }
    long multipolygon(const std::vector<std::pair<long, std::string>>& ways, Tags tags)
    {
        const long id = nextRelation_++;
        tags["type"] = "multipolygon";
        body_ += "  <relation id=\"" + std::to_string(id) + "\" version=\"1\">\n";
        for (const auto& [w, role] : ways)
            body_ += "    <member type=\"way\" ref=\"" + std::to_string(w) + "\" role=\"" + role + "\"/>\n";
        Tail("relation", tags);
        return id;
    }
    // Nodes first, then ways, then relations, as the format has them.
    std::string text() const
    {
        return "<?xml version='1.0' encoding='UTF-8'?>\n<osm version=\"0.6\" generator=\"test\">\n" + nodes_ +
               ways_ + relations_ + "</osm>\n";
    }
    void save(const std::string& path) const { std::ofstream(path, std::ios::binary) << text(); }

private:
    void Close(const char* what, const Tags& tags)
    {
        if (tags.empty()) {
            body_ += "/>\n";
        } else {
            body_ += ">\n";
            Tail(what, tags);
            return;
        }
        Flush(what);
    }
    void Tail(const char* what, const Tags& tags)
    {
        for (const auto& [k, v] : tags)
            body_ += "    <tag k=\"" + k + "\" v=\"" + v + "\"/>\n";
        body_ += std::string("  </") + what + ">\n";
        Flush(what);
    }
    void Flush(const std::string& what)
    {
        (what == "node" ? nodes_ : what == "way" ? ways_ : relations_) += body_;
        body_.clear();
    }

    std::string body_, nodes_, ways_, relations_;
    long nextNode_ = 1, nextWay_ = 100, nextRelation_ = 1000;
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

} // namespace fw::test
