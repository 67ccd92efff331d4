#include "explain/Section.hpp"

#include <algorithm>
#include <ostream>

namespace s3vfs::explain {

namespace {

std::size_t longest(const std::vector<Place>& places, std::string Place::*column) {
    std::size_t width = 0;
    for (const Place& place : places)
        width = std::max(width, (place.*column).size());
    return width;
}

std::string padded(const std::string& text, std::size_t width) {
    return text + std::string(width - std::min(width, text.size()), ' ');
}

}  // namespace

void print(std::ostream& out, const Section& section) {
    constexpr std::size_t widest = 40;  // longer answers stand out rather than push the others away
    const auto nameWidth = longest(section.places, &Place::name);
    const auto answerWidth = std::min(longest(section.places, &Place::answer), widest);
    out << section.title << "\n";
    for (const Place& place : section.places) {
        out << "  " << padded(place.name, nameWidth) << "  ";
        if (place.use.empty()) {
            out << place.answer << "\n";
        } else {
            out << padded(place.answer, answerWidth) << "  <- used: " << place.use << "\n";
        }
    }
    for (const std::string& remark : section.remarks)
        out << "  ! " << remark << "\n";
    out << "\n";
}

}  // namespace s3vfs::explain
