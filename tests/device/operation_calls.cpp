// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "tests/device/operations.h"

#include <cstring>
#include <ostream>
#include <type_traits>

namespace {

// One argument of an operation, by its type.
template<typename Type> Type argument([[maybe_unused]] int number, [[maybe_unused]] long *out)
{
    if constexpr (std::is_same_v<Type, long *>)
        return out;
    else if constexpr (std::is_same_v<Type, const char *>)
        return "";
    else
        return static_cast<Type>(number);
}

// The call, by whichever way `function` takes.
template<typename Result, typename... Types, typename Function>
Outcome invoke(Result (BaseDevice::* /*like*/)(Types...), int number, Function function)
{
    Outcome outcome{ false, untouched };
    if constexpr (std::is_void_v<Result>)
        function(argument<Types>(number, &outcome.out)...);
    else
        outcome.result = function(argument<Types>(number, &outcome.out)...);
    return outcome;
}

// The first word of a pointer to a virtual member function. AArch64 and 32-bit ARM keep the
// "virtual" mark in the second word, all others in the first one's lowest bit.
template<typename Pointer> int slotOfPointer(Pointer member)
{
    std::ptrdiff_t words[2];
    static_assert(sizeof words == sizeof member);
    std::memcpy(words, &member, sizeof words);
#if defined(__aarch64__) || defined(__arm__)
    const std::ptrdiff_t offset = words[0];
#else
    const std::ptrdiff_t offset = words[0] - 1;
#endif
    return static_cast<int>(offset / static_cast<std::ptrdiff_t>(sizeof(void *)));
}

template<typename Result, typename... Types>
auto functionLike(void *address, Result (BaseDevice::* /*like*/)(Types...))
{
    // A member function takes the object as a first, hidden argument.
    return reinterpret_cast<Result (*)(BaseDevice *, Types...)>(address);
}

// The types of an operation's parameters, as compilers abbreviate them in symbols.
template<typename Result, typename... Types>
std::string mangled(Result (BaseDevice::* /*like*/)(Types...))
{
    const auto one = [](auto *type) {
        using Type = std::remove_pointer_t<decltype(type)>;
        if constexpr (std::is_same_v<Type, int>)
            return "i";
        else if constexpr (std::is_same_v<Type, unsigned char>)
            return "h";
        else if constexpr (std::is_same_v<Type, long *>)
            return "Pl";
        else
            return "PKc";
    };
    if constexpr (sizeof...(Types) == 0)
        return "v";
    else
        return (std::string() + ... + one(static_cast<Types *>(nullptr)));
}

} // namespace

std::ostream &operator<<(std::ostream &out, const Operation &operation)
{
    return out << operation.name << '(' << operation.argument << ')';
}

Outcome call(BaseDevice &device, const Member &member, int number)
{
    return std::visit(
        [&](auto pointer) {
            return invoke(pointer, number,
                [&](auto... arguments) { return (device.*pointer)(arguments...); });
        },
        member);
}

Outcome callSlot(BaseDevice &device, int slot, const Member &like, int number)
{
    return std::visit(
        [&](auto pointer) {
            const auto function = functionLike(entry(device, slot), pointer);
            return invoke(pointer, number,
                [&](auto... arguments) { return function(&device, arguments...); });
        },
        like);
}

int slotOf(const Member &member)
{
    return std::visit([](auto pointer) { return slotOfPointer(pointer); }, member);
}

void *entry(const BaseDevice &device, int slot)
{
    void **table = nullptr;
    std::memcpy(&table, &device, sizeof table);
    return table[slot];
}

std::string symbolOf(const Operation &operation)
{
    const std::string name = operation.name;
    return "_ZN9USBDevice" + std::to_string(name.size()) + name + "E"
        + std::visit([](auto pointer) { return mangled(pointer); }, operation.member);
}
