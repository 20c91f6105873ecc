#pragma once

#include "workbench/treatment/ChoiceRecord.h"
#include "workbench/treatment/KernelZero.h"

#include <nlohmann/json.hpp>

// Parts of records for programs; what does not apply to a method has no field.
nlohmann::ordered_json choiceJson(const ChoiceRecord& choice);
nlohmann::ordered_json movedJson(const Movement& moved);
