#pragma once

#include <string>
#include <string_view>

// Whether a cell below a name is its unit: in brackets, or made of units that laboratories use,
// with or without a prefix, as a word or as a sign (mV, 1/cm, seconds). An empty cell and a dash
// stand for none.
bool isUnit(std::string_view cell);

// A name with its unit, as headers write it: "Channel A (mV)". The name alone if there is none.
std::string withUnit(const std::string& name, std::string_view unit);
