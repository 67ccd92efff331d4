// Does one operation over and over, for the parent to measure.
//
// usage: s3provider_bench_worker curl|sdk|client|parse OPERATION COUNT
// Prints the CPU time of COUNT operations in microseconds, and their allocations (0 where nothing counts
// them). The server comes from the environment.

#include <dlfcn.h>
#include <sys/resource.h>

#include <cstdlib>
#include <functional>
#include <iostream>
#include <stdexcept>

#include "Subject.hpp"
#include "Workload.hpp"

namespace {

using namespace bench;

std::unique_ptr<Subject> makeSubject(std::string_view name) {
    const Target target = targetFromEnvironment();
    if (name == "curl") return makeCurlSubject(target, content(largeSize));
    if (name == "sdk") return makeSdkSubject(target, content(largeSize));
    if (name == "client") return makeClientSubject(target, content(largeSize));
    if (name == "parse") return makeListingParse(target);
    throw std::invalid_argument("no such subject");
}

const Operation& operationNamed(std::string_view name) {
    for (const auto& operation : operations) {
        if (operation.name == name) return operation;
    }
    throw std::invalid_argument("no such operation");
}

std::function<std::uint64_t()> stepOf(Subject& subject, const Operation& operation, Sink& sink) {
    if (operation.name == head.name) return [&] { return subject.head(largeKey); };
    if (operation.name == getSmall.name) return [&] { return subject.get(smallKey, 0, 0, sink); };
    if (operation.name == getLarge.name)
        return [&] { return subject.get(largeKey, largeSize, 2 * largeSize - 1, sink); };
    if (operation.name == putLarge.name) return [&] { return subject.put(writtenKey); };
    return [&] { return subject.list(listedPrefix); };
}

std::uint64_t cpuMicroseconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto micros = [](const timeval& time) { return time.tv_sec * 1000000L + time.tv_usec; };
    return static_cast<std::uint64_t>(micros(usage.ru_utime) + micros(usage.ru_stime));
}

/// Asks the library that counts, if it was preloaded.
std::uint64_t allocations() {
    static const auto count =
        reinterpret_cast<std::uint64_t (*)()>(dlsym(RTLD_DEFAULT, "s3provider_bench_allocations"));
    return count == nullptr ? 0 : count();
}

void repeat(const std::function<std::uint64_t()>& step, const Operation& operation, unsigned long count) {
    for (unsigned long i = 0; i < count; ++i) {
        if (step() != operation.amount) throw std::runtime_error("an operation brought less than it should");
    }
}

void measure(std::string_view subjectName, const Operation& operation, unsigned long count) {
    const auto subject = makeSubject(subjectName);
    Sink sink(largeSize);
    const auto step = stepOf(*subject, operation, sink);
    repeat(step, operation, 2);  // opens the connection, fills the caches

    const std::uint64_t cpu = cpuMicroseconds();
    const std::uint64_t blocks = allocations();
    repeat(step, operation, count);
    const std::uint64_t blocksAfter = allocations();
    std::cout << cpuMicroseconds() - cpu << ' ' << blocksAfter - blocks << '\n';
}

}  // namespace

int main(int argc, char* argv[]) {
    try {
        if (argc != 4) throw std::invalid_argument("usage: s3provider_bench_worker SUBJECT OPERATION COUNT");
        measure(argv[1], operationNamed(argv[2]), std::stoul(argv[3]));
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::cerr << "s3provider_bench_worker: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
