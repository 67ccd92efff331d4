#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <memory>

#include "commands/Commands.hpp"

namespace s3vfs {

void addRemoveCommand(CLI::App& app, Command& chosen) {
    auto* command = app.add_subcommand("rm", "Delete a file; one that doesn't exist is no error");
    auto text = std::make_shared<std::string>();
    command->add_option("address", *text, "s3://BUCKET/KEY")->required();
    command->callback([&chosen, text] {
        const auto address = parseFileAddress(*text);
        chosen = onObject("rm", address, [address](auto& bucket) { bucket.remove(address.path()); });
    });
}

}  // namespace s3vfs
