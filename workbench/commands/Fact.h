#pragma once

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

using Json = nlohmann::ordered_json;

// One fact, for programs by its key and for people by its name.
struct Fact {
    std::string key, name;
    Json value;
    std::string text = {};  // of the value, for people; empty: as it is
};

// A line for each.
std::string linesOf(const std::vector<Fact>& facts);

// An object with all keys.
Json objectOf(const std::vector<Fact>& facts);

// As programs read it, with letters that are no UTF-8 replaced.
std::string documentOf(const Json& value);
