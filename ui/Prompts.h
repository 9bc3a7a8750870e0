// The texts of the main window in the current language, one member per identifier of the catalogue.
#pragma once

#include <string>
#include <string_view>

namespace tessaly {

struct Prompts {
    std::string titleVorn;
    std::string userFuncVarFrmPrmpt1; // the first character of a name is a digit
    std::string userFuncVarFrmPrmpt2; // a name holds a bad character
    std::string userFuncVarFrmPrmpt3; // caption of these two
    std::string vornMainFrmPrmpt1;
    std::string vornMainFrmPrmpt2;
    std::string vornMainFrmPrmpt3;
    std::string vornMainFrmPrmpt4;
    std::string vornMainFrmPrmpt5;
    std::string vornMainFrmPrmpt6;
    std::string vornMainFrmPrmpt7;
    std::string vornMainFrmPrmpt8;
    std::string vornMainFrmPrmpt9;
    std::string vornMainFrmPrmpt10;
    std::string vornMainFrmPrmpt11;
    std::string vornMainFrmPrmpt12;
    std::string vornMainFrmPrmpt13;
    std::string vornMainFrmPrmpt14;
    std::string vornMainFrmPrmpt15;
    std::string vornMainFrmPrmpt16;
    std::string vornMainFrmPrmpt19;
    std::string vornMainFrmPrmpt20;
    std::string vornMainFrmPrmpt21;
    std::string vornMainFrmPrmpt22;
    std::string vornMainFrmPrmpt23;
    std::string vornMainFrmPrmpt24;
    std::string vornMainFrmPrmpt25;
    std::string vornMainFrmPrmpt26;
    std::string vornMainFrmPrmpt27;
    std::string vornMainFrmPrmpt28;
    std::string vornMainFrmPrmpt29;
    std::string vornMainFrmPrmpt32;
    std::string vornMainFrmPrmpt33;
    std::string vornMainFrmPrmpt34;
    std::string vornMainFrmPrmpt35;
    std::string vornMainFrmPrmpt36;
    std::string vornMainFrmPrmpt37;
    std::string vornMainFrmPrmpt38;
    std::string vornMainFrmPrmpt39;
    std::string vornMainFrmPrmpt40;
    std::string vornMainFrmPrmpt41;
    std::string vornMainFrmPrmpt42;
    std::string vornMainFrmPrmpt43;
    std::string lblcodeEditVariableCode;
    std::string lblcodeEditEventCode;
    std::string lblcodeEditFunctionCode;
    std::string unknown;

    // The member of that name. Throws std::out_of_range when there is none.
    std::string& Member(std::string_view identifier);
};

} // namespace tessaly
