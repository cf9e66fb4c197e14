// A registry store in memory: the four roots of this machine, names matched case-blind.
#include <map>

#include "os/registry_path.hpp"
#include "os/registry_store.hpp"
#include "value/text.hpp"

namespace quiller {
namespace {

struct Value {
    std::string name;
    RegistryData data;
};

struct Node {
    std::string name;
    std::map<std::string, Node> keys;     // by lower-cased name: the enumeration order
    std::map<std::string, Value> values;  // likewise
};

class MemoryRegistryStore final : public RegistryStore {
  public:
    int connect(std::string_view, RegistryRoot) override { return reg_error::kBadNetPath; }

    RegistryStatus open_key(const RegistryKeyRef& key) override {
        int code = 0;
        find(key, false, code);
        return {code, RegistryStep::Open};
    }
    RegistryStatus create_key(const RegistryKeyRef& key) override {
        int code = 0;
        find(key, true, code);
        return {code, RegistryStep::Open};
    }

    RegistryStatus read_value(const RegistryKeyRef& key, std::string_view name,
                              RegistryData& out) override {
        int code = 0;
        Node* node = find(key, false, code);
        if (!node) return {code, RegistryStep::Open};
        const auto it = node->values.find(text::to_lower(name));
        if (it == node->values.end()) return {reg_error::kFileNotFound, RegistryStep::Work};
        out = it->second.data;
        return {};
    }

    RegistryStatus set_value(const RegistryKeyRef& key, std::string_view name,
                             const RegistryData& data) override {
        int code = 0;
        Node* node = find(key, false, code);
        if (!node) return {code, RegistryStep::Open};
        if (text::char_count(name) > kMaxValueNameChars)
            return {reg_error::kInvalidParameter, RegistryStep::Work};
        auto [it, added] = node->values.try_emplace(text::to_lower(name));
        if (added) it->second.name = name;
        it->second.data = data;
        return {};
    }

    RegistryStatus delete_value(const RegistryKeyRef& key, std::string_view name) override {
        int code = 0;
        Node* node = find(key, false, code);
        if (!node) return {code, RegistryStep::Open};
        if (node->values.erase(text::to_lower(name)) == 0)
            return {reg_error::kFileNotFound, RegistryStep::Work};
        return {};
    }

    RegistryStatus delete_key(const RegistryKeyRef& key) override {
        int code = 0;
        if (!find(key, false, code)) return {code, RegistryStep::Open};
        if (names_.empty()) return {reg_error::kAccessDenied, RegistryStep::Work};
        const std::string_view last = names_.back();
        names_.pop_back();
        Node* parent = walk(roots_[root_index(key.root)], false);
        parent->keys.erase(text::to_lower(last));
        return {};
    }

    RegistryStatus enum_key(const RegistryKeyRef& key, std::uint32_t index,
                            std::string& name) override {
        int code = 0;
        Node* node = find(key, false, code);
        if (!node) return {code, RegistryStep::Open};
        if (index >= node->keys.size()) return {reg_error::kNoMoreItems, RegistryStep::Work};
        name = std::next(node->keys.begin(), index)->second.name;
        return {};
    }

    RegistryStatus enum_value(const RegistryKeyRef& key, std::uint32_t index,
                              std::string& name) override {
        int code = 0;
        Node* node = find(key, false, code);
        if (!node) return {code, RegistryStep::Open};
        if (index >= node->values.size()) return {reg_error::kNoMoreItems, RegistryStep::Work};
        name = std::next(node->values.begin(), index)->second.name;
        return {};
    }

    std::string error_text(int code) override { return registry_error_text(code); }

  private:
    static std::size_t root_index(RegistryRoot root) {
        return static_cast<std::uint32_t>(root) & 3u;
    }

    // The key's node (created with its parents when `create`); nullptr with `code` when it is
    // missing or can't be named. Leaves the key's names in names_.
    Node* find(const RegistryKeyRef& key, bool create, int& code) {
        code = local_key_names(key, names_);
        if (code != reg_error::kOk) return nullptr;
        Node* node = walk(roots_[root_index(key.root)], create);
        if (!node) code = reg_error::kFileNotFound;
        return node;
    }

    Node* walk(Node& root, bool create) {
        Node* node = &root;
        for (const std::string_view name : names_) {
            const std::string folded = text::to_lower(name);
            auto it = node->keys.find(folded);
            if (it == node->keys.end()) {
                if (!create) return nullptr;
                it = node->keys.emplace(folded, Node{std::string(name), {}, {}}).first;
            }
            node = &it->second;
        }
        return node;
    }

    Node roots_[4];
    std::vector<std::string_view> names_;
};

}  // namespace

std::unique_ptr<RegistryStore> make_memory_registry_store() {
    return std::make_unique<MemoryRegistryStore>();
}

}  // namespace quiller
