#pragma once

#include "cppmicroservices/ServiceInterface.h"
#include "cppmicroservices/servicecomponent/detail/ComponentInstance.hpp"

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>

namespace cppmicroservices::service::component::detail {

template <class T, class = void>
inline constexpr bool hasActivate = false;
template <class T>
inline constexpr bool hasActivate<T, std::void_t<decltype(std::declval<T&>().Activate(
                                         std::declval<const std::shared_ptr<ComponentContext>&>()))>> = true;

template <class T, class = void>
inline constexpr bool hasDeactivate = false;
template <class T>
inline constexpr bool hasDeactivate<T, std::void_t<decltype(std::declval<T&>().Deactivate(
                                           std::declval<const std::shared_ptr<ComponentContext>&>()))>> =
    true;

template <class T, class Interfaces, class... Dependencies>
class ComponentInstanceImpl;

/// An instance whose object is a T and serves the Interfaces. Its constructor takes the Dependencies, each a
/// `std::shared_ptr` of the interface of one reference. Its operations Activate and Deactivate, if it has
/// them, are given the component's context.
template <class T, class... Interfaces, class... Dependencies>
class ComponentInstanceImpl<T, std::tuple<Interfaces...>, Dependencies...> final : public ComponentInstance {
public:
    using References = std::array<std::string, sizeof...(Dependencies)>;

    /// The names of the references, in the order of the constructor's parameters.
    explicit ComponentInstanceImpl(const References& references = {}) : references_(references) {}

    void CreateInstance(const std::shared_ptr<ComponentContext>& context) override {
        context_ = context;
        object_ = create(std::index_sequence_for<Dependencies...>());
    }

    void Activate() override {
        if constexpr (hasActivate<T>) object_->Activate(context_);
    }

    void Deactivate() override {
        if constexpr (hasDeactivate<T>) object_->Deactivate(context_);
    }

    InterfaceMapPtr GetInterfaceMap() override { return MakeInterfaceMap<Interfaces...>(object_); }

private:
    template <std::size_t... Index>
    std::shared_ptr<T> create(std::index_sequence<Index...>) const {
        return std::make_shared<T>(
            context_->template LocateService<typename Dependencies::element_type>(references_[Index])...);
    }

    References references_;
    std::shared_ptr<ComponentContext> context_;
    std::shared_ptr<T> object_;
};

}  // namespace cppmicroservices::service::component::detail
