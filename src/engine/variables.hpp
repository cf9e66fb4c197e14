// The variable table: global (name, value) text pairs in the order they were first set, with a
// hash index by name. Names are stored lower case, trimmed, without their delimiters. Beside each
// value the table keeps what has been worked out about it (TextFacts), forgotten when it changes;
// entries never move, so a reference to a value or its facts stays valid for the run.
#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>

#include "value/text_facts.hpp"

namespace quiller {

inline constexpr int kMaxVariables = 32767;
// The longest text a variable or a substituted line can hold.
inline constexpr std::size_t kMaxTextLength = 2147483647;

class VariableTable {
  public:
    // Sets a variable by its name as written (index notation resolved, delimiters stripped).
    // Returns false when the table is full and the variable is new.
    bool set(std::string_view name, std::string_view value);
    // Reads a variable by its bare name (index notation resolved, lower-cased, not trimmed).
    std::string get(std::string_view name, std::string_view default_value = {}) const;

    // The prepared name `set` stores under, and direct access by entry for cached lookups.
    std::string prepare_set_name(std::string_view name) const;
    std::string prepare_get_name(std::string_view name) const;
    int find(const std::string& prepared) const;
    int set_prepared(const std::string& prepared, std::string_view value);  // -1 when full
    const std::string& value_at(int index) const { return entries_[index].value; }
    const value::TextFacts& facts_at(int index) const { return entries_[index].facts; }
    void assign_at(int index, std::string_view value) {
        check_length(value.size());
        entries_[index].value = value;
        entries_[index].facts.forget();
    }
    // The same, for a value known to be the general form of the whole number `number`.
    void assign_whole_number_at(int index, std::string_view value, double number) {
        assign_at(index, value);
        entries_[index].facts.know_whole_number(number);
    }
    bool exists(std::string_view name) const { return find(prepare_get_name(name)) >= 0; }

    int count() const { return static_cast<int>(entries_.size()); }
    const std::string& name_at(int index) const { return entries_[index].name; }

    // Replaces the first "[...]" index of a name by its value when it is not numeric.
    std::string resolve_index(std::string_view name) const;

    // A text longer than the limit is the failure "Out of string space" (nothing is stored).
    void check_length(std::size_t length) const;
    std::size_t text_limit() const { return text_limit_; }
    void set_text_limit(std::size_t limit) { text_limit_ = limit; }

  private:
    struct Entry {
        std::string name;
        std::string value;
        value::TextFacts facts;
    };
    std::deque<Entry> entries_;
    std::unordered_map<std::string, int> index_;
    std::size_t text_limit_ = kMaxTextLength;
};

}  // namespace quiller
