#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace s3vfs::explain {

/// What one place answered when it was asked. All texts are fit for a terminal and hold no secret.
struct Place {
    std::string name;
    std::string answer;
    std::string use;  ///< why, or as what, the answer is used; empty when it isn't
};

/// One topic: the places in the order of asking, and what is unusual there.
struct Section {
    std::string title;
    std::vector<Place> places;
    std::vector<std::string> remarks;
};

/// The title on a line of its own, then one line a place and one a remark, and an empty one.
void print(std::ostream& out, const Section& section);

}  // namespace s3vfs::explain
