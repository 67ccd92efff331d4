#include "Report.hpp"

#include <cstdio>
#include <ostream>

namespace bench {
namespace {

constexpr const char* subjects[] = {"curl", "sdk", "client"};

std::string number(const std::optional<double>& value, int digits) {
    if (!value) return "-";
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", digits, *value);
    return text;
}

std::string ratio(const std::optional<double>& value, const std::optional<double>& base, int digits) {
    if (!value || !base || *base == 0) return "-";
    return number(*value / *base, digits);
}

using Field = std::optional<double> (*)(const Measurement&);

std::optional<double> cpu(const Measurement& m) {
    return m.cpuMicroseconds;
}
std::optional<double> instructions(const Measurement& m) {
    return m.instructions;
}
std::optional<double> allocations(const Measurement& m) {
    return m.allocations;
}
std::optional<double> requests(const Measurement& m) {
    return m.requests;
}
std::optional<double> connections(const Measurement& m) {
    if (!m.connections) return std::nullopt;
    return static_cast<double>(*m.connections);
}

/// A row an operation: the field of each subject, then how the SDK compares with libcurl and the client with
/// the SDK.
void printTable(std::ostream& out, const Results& results, const char* title, Field field, int digits) {
    out << "\n| " << title
        << " | (a) libcurl | (b) SDK | (c) client | b/a | c/b |\n|---|---:|---:|---:|---:|---:|\n";
    for (const auto& operation : operations) {
        std::optional<double> values[3];
        for (std::size_t i = 0; i < 3; ++i)
            values[i] = field(results.at({std::string(operation.name), subjects[i]}));
        out << "| " << operation.name;
        for (const auto& value : values)
            out << " | " << number(value, digits);
        out << " | " << ratio(values[1], values[0], 2) << " | " << ratio(values[2], values[1], 3) << " |\n";
    }
}

void printParse(std::ostream& out, const Results& results) {
    const auto& parse = results.at({std::string(list.name), "parse"});
    const auto& sdk = results.at({std::string(list.name), "sdk"});
    out << "\nA page's bare XML parse takes " << number(parse.cpuMicroseconds, 0) << " us of CPU and "
        << number(parse.instructions, 0) << " instructions; (b) is "
        << ratio(sdk.cpuMicroseconds, parse.cpuMicroseconds, 2) << " and "
        << ratio(sdk.instructions, parse.instructions, 2) << " times that.\n";
}

}  // namespace

void print(std::ostream& out, const Results& results) {
    printTable(out, results, "CPU, us", &cpu, 1);
    printTable(out, results, "instructions", &instructions, 0);
    printTable(out, results, "allocations", &allocations, 1);
    printTable(out, results, "requests", &requests, 2);
    printTable(out, results, "connections", &connections, 0);
    printParse(out, results);
}

}  // namespace bench
