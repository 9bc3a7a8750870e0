// Members by name.
#include "ui/Prompts.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace tessaly {

namespace {

struct PromptMember {
    std::string_view identifier;
    std::string Prompts::*member;
};

constexpr PromptMember PromptMembers[] = {
    {"titleVorn", &Prompts::titleVorn},
    {"userFuncVarFrmPrmpt1", &Prompts::userFuncVarFrmPrmpt1},
    {"userFuncVarFrmPrmpt2", &Prompts::userFuncVarFrmPrmpt2},
    {"userFuncVarFrmPrmpt3", &Prompts::userFuncVarFrmPrmpt3},
    {"vornMainFrmPrmpt1", &Prompts::vornMainFrmPrmpt1},
    {"vornMainFrmPrmpt2", &Prompts::vornMainFrmPrmpt2},
    {"vornMainFrmPrmpt3", &Prompts::vornMainFrmPrmpt3},
    {"vornMainFrmPrmpt4", &Prompts::vornMainFrmPrmpt4},
    {"vornMainFrmPrmpt5", &Prompts::vornMainFrmPrmpt5},
    {"vornMainFrmPrmpt6", &Prompts::vornMainFrmPrmpt6},
    {"vornMainFrmPrmpt7", &Prompts::vornMainFrmPrmpt7},
    {"vornMainFrmPrmpt8", &Prompts::vornMainFrmPrmpt8},
    {"vornMainFrmPrmpt9", &Prompts::vornMainFrmPrmpt9},
    {"vornMainFrmPrmpt10", &Prompts::vornMainFrmPrmpt10},
    {"vornMainFrmPrmpt11", &Prompts::vornMainFrmPrmpt11},
    {"vornMainFrmPrmpt12", &Prompts::vornMainFrmPrmpt12},
    {"vornMainFrmPrmpt13", &Prompts::vornMainFrmPrmpt13},
    {"vornMainFrmPrmpt14", &Prompts::vornMainFrmPrmpt14},
    {"vornMainFrmPrmpt15", &Prompts::vornMainFrmPrmpt15},
    {"vornMainFrmPrmpt16", &Prompts::vornMainFrmPrmpt16},
    {"vornMainFrmPrmpt19", &Prompts::vornMainFrmPrmpt19},
    {"vornMainFrmPrmpt20", &Prompts::vornMainFrmPrmpt20},
    {"vornMainFrmPrmpt21", &Prompts::vornMainFrmPrmpt21},
    {"vornMainFrmPrmpt22", &Prompts::vornMainFrmPrmpt22},
    {"vornMainFrmPrmpt23", &Prompts::vornMainFrmPrmpt23},
    {"vornMainFrmPrmpt24", &Prompts::vornMainFrmPrmpt24},
    {"vornMainFrmPrmpt25", &Prompts::vornMainFrmPrmpt25},
    {"vornMainFrmPrmpt26", &Prompts::vornMainFrmPrmpt26},
    {"vornMainFrmPrmpt27", &Prompts::vornMainFrmPrmpt27},
    {"vornMainFrmPrmpt28", &Prompts::vornMainFrmPrmpt28},
    {"vornMainFrmPrmpt29", &Prompts::vornMainFrmPrmpt29},
    {"vornMainFrmPrmpt32", &Prompts::vornMainFrmPrmpt32},
    {"vornMainFrmPrmpt33", &Prompts::vornMainFrmPrmpt33},
    {"vornMainFrmPrmpt34", &Prompts::vornMainFrmPrmpt34},
    {"vornMainFrmPrmpt35", &Prompts::vornMainFrmPrmpt35},
    {"vornMainFrmPrmpt36", &Prompts::vornMainFrmPrmpt36},
    {"vornMainFrmPrmpt37", &Prompts::vornMainFrmPrmpt37},
    {"vornMainFrmPrmpt38", &Prompts::vornMainFrmPrmpt38},
    {"vornMainFrmPrmpt39", &Prompts::vornMainFrmPrmpt39},
    {"vornMainFrmPrmpt40", &Prompts::vornMainFrmPrmpt40},
    {"vornMainFrmPrmpt41", &Prompts::vornMainFrmPrmpt41},
    {"vornMainFrmPrmpt42", &Prompts::vornMainFrmPrmpt42},
    {"vornMainFrmPrmpt43", &Prompts::vornMainFrmPrmpt43},
    {"lblcodeEditVariableCode", &Prompts::lblcodeEditVariableCode},
    {"lblcodeEditEventCode", &Prompts::lblcodeEditEventCode},
    {"lblcodeEditFunctionCode", &Prompts::lblcodeEditFunctionCode},
    {"unknown", &Prompts::unknown},
};

} // namespace

std::string& Prompts::Member(std::string_view identifier) {
    const auto* found =
        std::find_if(std::begin(PromptMembers), std::end(PromptMembers),
                     [identifier](const PromptMember& entry) { return entry.identifier == identifier; });
    if (found == std::end(PromptMembers)) {
        throw std::out_of_range("no text is called " + std::string(identifier));
    }
    return this->*found->member;
}

} // namespace tessaly
