#include "Platform/Controls/Component.h"

#include <cxxabi.h>

#include <cstdlib>
#include <map>
#include <mutex>
#include <string>
#include <typeindex>

#include "Platform/Runtime/Immortal.h"

namespace Varnholt {
namespace {

String PlainName(const std::type_info& type) {
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> whole(
        abi::__cxa_demangle(type.name(), nullptr, nullptr, &status), &std::free);
    const std::string name = whole ? whole.get() : type.name();
    std::size_t start = 0;  // behind the last scope
    int depth = 0;          // of brackets
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (name[i] == '<' || name[i] == '(') ++depth;
        if (name[i] == '>' || name[i] == ')') --depth;
        if (name[i] == ':' && depth == 0) start = i + 1;
    }
    return FromUtf8(name.substr(start));
}

}  // namespace

TComponent::TComponent() : FLife(std::make_shared<char>()) {}

TComponent::~TComponent() = default;

const String& TComponent::ClassName() const {
    static TImmortal<std::mutex> mutex;
    static TImmortal<std::map<std::type_index, String>> names;
    const std::lock_guard lock(*mutex);
    const std::type_info& type = typeid(*this);
    const auto found = names->find(type);
    return found != names->end() ? found->second : names->emplace(type, PlainName(type)).first->second;
}

}  // namespace Varnholt
