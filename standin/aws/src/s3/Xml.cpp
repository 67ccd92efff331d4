#include "s3/Xml.hpp"

#include <algorithm>
#include <array>

#include "s3/LongTags.hpp"

namespace standin::aws::s3 {

namespace {

struct Entity {
    std::string_view text;
    char meaning;
};
constexpr Entity lineFeed = {"&#xA;", '\n'};
constexpr Entity carriageReturn = {"&#xD;", '\r'};
constexpr std::array<Entity, 7> entities = {{{"&lt;", '<'},
                                             {"&gt;", '>'},
                                             {"&amp;", '&'},
                                             {"&quot;", '"'},
                                             {"&apos;", '\''},
                                             lineFeed,
                                             carriageReturn}};

// Writes line ends of texts as character references, so that they survive another reading. Elements in a text
// get a line each, indented no deeper than anybody nests them: with a hundred levels the layout would be a
// hundred times what came.
class LineEndEscapingPrinter : public tinyxml2::XMLPrinter {
public:
    using XMLPrinter::Visit;

    bool Visit(const tinyxml2::XMLText& text) override {
        insideText_ = !text.CData();
        const bool goOn = XMLPrinter::Visit(text);
        insideText_ = false;
        return goOn;
    }

protected:
    void Write(const char* data, size_t size) override {
        if (!insideText_) return XMLPrinter::Write(data, size);
        for (const char c : std::string_view(data, size))
            writeOne(c);
    }

    void PrintSpace(int depth) override { XMLPrinter::PrintSpace(std::min(depth, deepestLayout)); }

private:
    static constexpr int deepestLayout = 4;

    void writeOne(char c) {
        for (const Entity& lineEnd : {lineFeed, carriageReturn}) {
            if (c == lineEnd.meaning) return XMLPrinter::Write(lineEnd.text.data(), lineEnd.text.size());
        }
        Putc(c);
    }

    bool insideText_ = false;
};

// Looks whether elements are too deep in each other. Each version of tinyxml2 has a bound of its own, which
// saves the stack.
class DepthCheck : public tinyxml2::XMLVisitor {
public:
    bool VisitEnter(const tinyxml2::XMLElement& /*element*/,
                    const tinyxml2::XMLAttribute* /*first*/) override {
        ++depth_;
        tooDeep_ = tooDeep_ || depth_ > deepest;
        return !tooDeep_;
    }
    bool VisitExit(const tinyxml2::XMLElement& /*element*/) override {
        --depth_;
        return !tooDeep_;
    }

    bool tooDeep() const { return tooDeep_; }

private:
    static constexpr int deepest = 98;
    int depth_ = 0;
    bool tooDeep_ = false;
};

// What most elements hold: one text, or nothing. Null for anything else.
const char* plainText(const tinyxml2::XMLElement& element) {
    const auto* first = element.FirstChild();
    if (first == nullptr) return "";
    const auto* text = first == element.LastChild() ? first->ToText() : nullptr;
    return text != nullptr && !text->CData() ? text->Value() : nullptr;
}

std::string decoded(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        std::size_t used = 1;
        char meaning = text.front();
        for (const Entity& entity : entities) {
            if (text.substr(0, entity.text.size()) != entity.text) continue;
            used = entity.text.size();
            meaning = entity.meaning;
            break;
        }
        result += meaning;
        text.remove_prefix(used);
    }
    return result;
}

}  // namespace

XmlDocument::XmlDocument(std::string_view text) {
    const std::string_view readable = cutInLongTag(text);
    document_.Parse(readable.data(), readable.size());
    DepthCheck check;
    document_.Accept(&check);
    tooDeep_ = check.tooDeep();
}

std::string printedText(const tinyxml2::XMLElement& element) {
    LineEndEscapingPrinter printer;
    for (const auto* node = element.FirstChild(); node != nullptr; node = node->NextSibling())
        node->Accept(&printer);
    return printer.CStr();
}

std::string printed(const tinyxml2::XMLDocument& document) {
    LineEndEscapingPrinter printer;
    document.Print(&printer);
    return printer.CStr();
}

// A plain text is what printing and decoding would bring back.
std::string decodedText(const tinyxml2::XMLElement& element) {
    const char* const plain = plainText(element);
    return plain != nullptr ? plain : decoded(printedText(element));
}

std::string trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n\v\f";
    const auto begin = text.find_first_not_of(blanks);
    if (begin == std::string_view::npos) return {};
    return std::string(text.substr(begin, text.find_last_not_of(blanks) - begin + 1));
}

const tinyxml2::XMLElement* child(const tinyxml2::XMLElement* parent, const char* name) {
    return parent == nullptr ? nullptr : parent->FirstChildElement(name);
}

std::string childText(const tinyxml2::XMLElement* parent, const char* name) {
    const auto* found = child(parent, name);
    return found == nullptr ? std::string() : decodedText(*found);
}

std::string trimmedChildText(const tinyxml2::XMLElement* parent, const char* name) {
    return trimmed(childText(parent, name));
}

}  // namespace standin::aws::s3
