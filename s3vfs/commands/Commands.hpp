#pragma once

#include <foundation/storage/provider/IProvider.hpp>
#include <functional>
#include <optional>
#include <string>

#include "commands/S3Address.hpp"

namespace CLI {
class App;
}

namespace s3vfs {

class ServiceFramework;

/// What the command line asks for. It is given the framework to find the plug-in in, and returns whether all
/// went well; throws std::exception when it fails.
struct Command {
    std::string name;                  ///< as typed, for messages
    std::optional<S3Address> address;  ///< for messages, too
    std::function<bool(ServiceFramework&)> run;
};

/// The command that opens the address's bucket and does something there.
Command onBucket(const std::string& name, const S3Address& address,
                 std::function<void(foundation::storage::provider::IProvider&)> action);

/// The same for a command that is about the object of that key in the first place: nothing at all is sent
/// when the key can't be addressed. A key that ends with "/" is a folder's, which is looked for in listings.
Command onObject(const std::string& name, const S3Address& address,
                 std::function<void(foundation::storage::provider::IProvider&)> action);

/// Each declares one subcommand, which fills in `chosen` when it is the one on the command line. `chosen`
/// must outlive the parsing.
void addStatCommand(CLI::App& app, Command& chosen);
void addListCommand(CLI::App& app, Command& chosen);
void addCatCommand(CLI::App& app, Command& chosen);
void addPutCommand(CLI::App& app, Command& chosen);
void addRemoveCommand(CLI::App& app, Command& chosen);
void addBundleCommand(CLI::App& app, Command& chosen);
void addExplainCommand(CLI::App& app, Command& chosen);

}  // namespace s3vfs
