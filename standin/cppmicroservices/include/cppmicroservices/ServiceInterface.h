#pragma once

#include <memory>
#include <string>
#include <typeinfo>
#include <unordered_map>
#include <utility>

namespace cppmicroservices {

/// A service's object, seen as each interface it is registered under, by the interface's name.
using InterfaceMap = std::unordered_map<std::string, std::shared_ptr<void>>;
using InterfaceMapPtr = std::shared_ptr<InterfaceMap>;
using InterfaceMapConstPtr = std::shared_ptr<const InterfaceMap>;

namespace detail {

std::string GetDemangledName(const std::type_info& type);

}  // namespace detail

}  // namespace cppmicroservices

/// The name of an interface: its type's, as it is written in C++ ("storage::Client").
template <class T>
const std::string& us_service_interface_iid() {
    static const std::string name = cppmicroservices::detail::GetDemangledName(typeid(T));
    return name;
}

namespace cppmicroservices {

template <class... Interfaces, class Class>
InterfaceMapPtr MakeInterfaceMap(const std::shared_ptr<Class>& object) {
    auto map = std::make_shared<InterfaceMap>();
    (map->emplace(us_service_interface_iid<Interfaces>(), std::static_pointer_cast<Interfaces>(object)), ...);
    return map;
}

}  // namespace cppmicroservices
