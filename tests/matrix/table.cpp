#include "table.h"

#include "harness/window_manager.h"
#include "known_differences.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <map>
#include <memory>
#include <sstream>

namespace tessellon::desktop {
namespace {

struct ClosePipe {
    void operator()(FILE* pipe) const { pclose(pipe); }
};

std::string outputOf(const std::string& command) {
    const std::unique_ptr<FILE, ClosePipe> pipe(popen(command.c_str(), "r"));
    std::string output;
    std::array<char, 256> buffer{};
    while (pipe && std::fgets(buffer.data(), buffer.size(), pipe.get()) != nullptr) {
        output += buffer.data();
    }
    return output;
}

// The version that Debian names, without its own additions.
std::string versionOf(const WindowManager& windowManager) {
    std::string version = outputOf("dpkg-query --show --showformat='${Version}' " +
                                   std::string(windowManager.package) + " 2>/dev/null");
    if (const auto epoch = version.find(':'); epoch != std::string::npos) {
        version.erase(0, epoch + 1);
    }
    version.erase(std::min(version.find_first_of("-+~"), version.size()));
    return version.empty() ? "of unknown version" : version;
}

std::string versions() {
    std::string line(versionsLine);
    const char* separator = "";
    for (const WindowManager& windowManager : windowManagers()) {
        line += separator + std::string(windowManager.name) + " " + versionOf(windowManager);
        separator = ", ";
    }
    return line + ".\n";
}

// Numbers the sentences in the order of their first use.
class Notes {
  public:
    std::size_t number(std::string_view sentence) {
        const auto found = std::find(sentences_.begin(), sentences_.end(), sentence);
        if (found != sentences_.end()) {
            return static_cast<std::size_t>(found - sentences_.begin()) + 1;
        }
        sentences_.push_back(sentence);
        return sentences_.size();
    }
    const std::vector<std::string_view>& sentences() const { return sentences_; }

  private:
    std::vector<std::string_view> sentences_;
};

std::string listOf(const std::vector<Subject>& listed) {
    std::string text;
    for (const Subject subject : listed) {
        text += (text.empty() ? "" : ", ") + std::string(textOf(subject).title);
    }
    return text;
}

// One cell of the table: "exact", or what is exact no more, with its notes.
class CellText {
  public:
    void add(Subject subject, std::string_view outcome, std::size_t note) {
        auto& group = groups_[{outcome, note}];
        group.push_back(subject);
    }
    std::string text() const {
        if (groups_.empty()) {
            return std::string(exact);
        }
        std::string text;
        for (const auto& [key, subjectsOfGroup] : groups_) {
            text += (text.empty() ? "" : "; ") + listOf(subjectsOfGroup) + ": " +
                    std::string(key.first) + "<sup>" + std::to_string(key.second) + "</sup>";
        }
        return text;
    }

  private:
    std::map<std::pair<std::string_view, std::size_t>, std::vector<Subject>> groups_;
};

}  // namespace

Page makePage(const Outcomes& outcomes, const std::filesystem::path& newerThan,
              std::string_view frame) {
    Page page;
    Notes notes;
    std::ostringstream table;
    table << "| |";
    for (const WindowManager& windowManager : windowManagers()) {
        table << ' ' << windowManager.name << " |";
    }
    table << "\n|---|";
    for (std::size_t i = 0; i < windowManagers().size(); ++i) {
        table << "---|";
    }
    table << '\n';
    for (const RowText& row : rows()) {
        table << "| " << row.title << " |";
        for (const WindowManager& windowManager : windowManagers()) {
            CellText text;
            for (const Subject subject : row.subjects) {
                const auto outcome =
                    outcomes.read({windowManager.name, row.row, subject}, newerThan);
                const auto* difference = knownDifference(windowManager.name, row.row, subject);
                if (!outcome) {
                    page.missing.push_back(std::string(windowManager.name) + ", " +
                                           std::string(row.id) + ", " +
                                           std::string(textOf(subject).id));
                } else if (difference != nullptr) {
                    text.add(subject, difference->outcome, notes.number(difference->note));
                }
            }
            table << ' ' << text.text() << " |";
        }
        table << '\n';
    }
    table << "\nWhat each line is tried with:\n\n";
    for (const RowText& row : rows()) {
        table << "- " << row.title << ": " << listOf(row.subjects) << ".\n";
    }
    if (!notes.sentences().empty()) {
        table << "\nNotes:\n\n";
        for (std::size_t i = 0; i < notes.sentences().size(); ++i) {
            table << i + 1 << ". " << notes.sentences()[i] << '\n';
        }
    }
    table << '\n' << versions();
    constexpr std::string_view place = "@table@\n";
    const auto at = frame.find(place);
    page.markdown =
        std::string(frame.substr(0, at)) + table.str() +
        std::string(at == std::string_view::npos ? "" : frame.substr(at + place.size()));
    return page;
}

std::string comparable(std::string_view markdown) {
    std::istringstream lines{std::string(markdown)};
    std::string kept;
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with(versionsLine)) {
            kept += line + '\n';
        }
    }
    return kept;
}

}  // namespace tessellon::desktop
