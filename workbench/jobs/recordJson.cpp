#include "workbench/jobs/recordJson.h"

#include <optional>

using Json = nlohmann::ordered_json;

template <typename Value>
static void addIf(Json& object, const char* key, const std::optional<Value>& value) {
    if (value) {
        object[key] = *value;
    }
}

Json choiceJson(const ChoiceRecord& choice) {
    Json found = Json::object();
    if (!choice.rule.empty()) {
        found["rule"] = choice.rule;
    }
    found["method"] = choice.method;
    addIf(found, "steps", choice.steps);
    addIf(found, "strength", choice.strength);
    addIf(found, "convergence", choice.convergence);
    addIf(found, "oversample", choice.oversampling);
    found["explained"] = choice.explained;
    found["kept"] = choice.kept;
    found["noise"] = choice.noise;
    addIf(found, "whiteness", choice.whiteness);
    addIf(found, "predictedError", choice.predictedError);
    return found;
}

Json movedJson(const Movement& moved) {
    return {{"samples", moved.samples},
            {"kernelZero", moved.kernelZero},
            {"lag", moved.lag},
            {"reason", moved.reason}};
}
