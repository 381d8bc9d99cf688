// SPDX-License-Identifier: GPL-3.0-or-later
#include "house/include_rules.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>

namespace tessaro::house {

namespace fs = std::filesystem;

namespace {

struct Include {
    std::string path;
    bool quoted = false;
};

std::string readFile(const fs::path& file)
{
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

std::vector<Include> includesOf(const std::string& text)
{
    std::vector<Include> found;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        std::erase_if(line, [](unsigned char c) { return std::isspace(c) != 0; });
        constexpr std::string_view directive = "#include";
        if (!line.starts_with(directive) || line.size() == directive.size()) continue;
        const char open = line[directive.size()];
        if (open != '"' && open != '<') continue;
        const std::size_t start = directive.size() + 1;
        const std::size_t end = line.find(open == '"' ? '"' : '>', start);
        if (end != std::string::npos) found.push_back({line.substr(start, end - start), open == '"'});
    }
    return found;
}

/// The types that a header defines outside of other types, with their namespace.
std::vector<std::string> typesOf(const std::string& text)
{
    static const std::regex opensNamespace(R"(namespace ([\w:]+) \{.*)");
    static const std::regex definesType(
        R"((?:class|struct|union|enum class) (?:[A-Z]+_API )?(\w+)(?: final)?(?: ?[:{].*)?)");
    std::vector<std::string> found;
    std::string space;
    std::istringstream in(text);
    std::smatch match;
    for (std::string line; std::getline(in, line);) {
        const bool declaresOnly = line.ends_with(';') && line.find('{') == std::string::npos;
        if (std::regex_match(line, match, opensNamespace))
            space = match[1].str() + "::";
        else if (!declaresOnly && std::regex_match(line, match, definesType))
            found.push_back(space + match[1].str());
    }
    return found;
}

bool isQtHeader(const std::string& path)
{
    return path.size() > 1 && path[0] == 'Q'
        && (std::isupper(static_cast<unsigned char>(path[1])) != 0 || path[1] == 't');
}

/// All of Qt's widgets at once: seconds of compile time for each file.
bool isWholeQtModule(const std::string& path)
{
    return path == "QtWidgets" || path == "QtCore" || path == "QtGui" || path == "QtWidgets/QtWidgets";
}

/// Walks the headers depth first and reports each circle where it closes.
class CircleSearch {
public:
    CircleSearch(const std::map<std::string, std::vector<std::string>>& graph, std::vector<std::string>& faults)
        : m_graph(graph)
        , m_faults(faults)
    {
    }

    void visit(const std::string& file)
    {
        if (const auto onPath = std::ranges::find(m_path, file); onPath != m_path.end()) {
            std::string circle = "circle of headers: ";
            for (auto it = onPath; it != m_path.end(); ++it) circle += *it + " -> ";
            m_faults.push_back(circle + file);
            return;
        }
        if (!m_done.insert(file).second) return;
        const auto node = m_graph.find(file);
        if (node == m_graph.end()) return;
        m_path.push_back(file);
        for (const std::string& next : node->second) visit(next);
        m_path.pop_back();
    }

private:
    const std::map<std::string, std::vector<std::string>>& m_graph;
    std::vector<std::string>& m_faults;
    std::vector<std::string> m_path;
    std::set<std::string> m_done;
};

} // namespace

RoomTable RoomTable::parse(std::string_view text)
{
    RoomTable table;
    std::istringstream in{std::string(text)};
    for (std::string line; std::getline(in, line);) {
        line.resize(std::min(line.size(), line.find('#')));
        if (line.find_first_not_of(" \t\r") == std::string::npos) continue;
        const std::size_t colon = line.find(':');
        if (colon == std::string::npos) {
            table.faults.push_back("no colon in: " + line);
            continue;
        }
        const std::string room = line.substr(0, colon);
        std::set<std::string> allowed;
        std::istringstream names(line.substr(colon + 1));
        for (std::string name; names >> name;) {
            if (name == "Qt")
                table.mayUseQt.insert(room);
            else if (table.mayInclude.contains(name))
                allowed.insert(name);
            else
                table.faults.push_back(room + " names " + name + ", which is not a room below it");
        }
        if (!table.mayInclude.emplace(room, std::move(allowed)).second) table.faults.push_back(room + " stands twice");
    }
    return table;
}

std::vector<std::string> checkIncludes(const fs::path& sources, const RoomTable& table)
{
    std::vector<std::string> faults;
    std::map<std::string, std::vector<std::string>> headers;
    std::map<std::string, std::set<std::string>> definitions;

    const auto checkFile = [&](const std::string& file, const std::string& room) {
        const auto allowed = table.mayInclude.find(room);
        if (allowed == table.mayInclude.end()) {
            faults.push_back(file + ": unknown room " + room);
            return;
        }
        const std::string text = readFile(sources / file);
        if (file.ends_with(".h"))
            for (const std::string& type : typesOf(text)) definitions[type].insert(file);
        for (const Include& include : includesOf(text)) {
            const std::string& path = include.path;
            if (!include.quoted) {
                if (isWholeQtModule(path))
                    faults.push_back(file + ": includes all of " + path);
                else if (isQtHeader(path) && !table.mayUseQt.contains(room))
                    faults.push_back(file + ": Qt header " + path + " in a room without Qt");
                continue;
            }
            if (path.ends_with(".moc")) continue;
            const std::string target = path.substr(0, path.find('/'));
            if (!fs::exists(sources / path))
                faults.push_back(file + ": no such file " + path);
            else if (target != room && !allowed->second.contains(target))
                faults.push_back(file + ": " + room + " may not include " + path);
            else if (file.ends_with(".h"))
                headers[file].push_back(path);
        }
    };

    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(sources)) {
        if (!entry.is_regular_file()) continue;
        const std::string extension = entry.path().extension().string();
        if (extension != ".h" && extension != ".cpp") continue;
        const std::string file = entry.path().lexically_relative(sources).generic_string();
        checkFile(file, file.substr(0, file.find('/')));
    }

    CircleSearch search(headers, faults);
    for (const auto& [file, includes] : headers) search.visit(file);
    for (const auto& [type, files] : definitions) {
        if (files.size() < 2) continue;
        std::string fault = type + " is defined in several headers:";
        for (const std::string& file : files) fault += ' ' + file;
        faults.push_back(fault);
    }
    std::ranges::sort(faults);
    return faults;
}

} // namespace tessaro::house
