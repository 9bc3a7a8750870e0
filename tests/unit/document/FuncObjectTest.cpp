// The function table: every operation's answers, the odd ones included.
#include "document/FuncObject.h"

#include <gtest/gtest.h>
#include <random>
#include <stdexcept>

namespace tessaly {
namespace {

FuncObject TableOf(std::initializer_list<std::string_view> names) {
    FuncObject table;
    for (const std::string_view name : names) {
        EXPECT_EQ(table.AddFunction(name, std::string(name) + " prototype", std::string(name) + " code"), Status::Done);
    }
    return table;
}

std::vector<std::string> NamesOf(const FuncObject& table) {
    std::vector<std::string> names;
    for (std::int32_t i = 0; i < table.GetCount(); ++i) {
        std::string name;
        table.GetName(i, name);
        names.push_back(name);
    }
    return names;
}

using Names = std::vector<std::string>;

TEST(FuncObjectTest, AnEmptyTableHasCountZero) {
    EXPECT_EQ(FuncObject().GetCount(), 0);
}

TEST(FuncObjectTest, AnEmptyTableFindsNothing) {
    FuncObject table;
    std::string prototype = "old";
    std::string code = "old";
    EXPECT_EQ(table.GetFunction("Main", prototype, code), Status::NotFound);
    EXPECT_EQ(prototype, "");
    EXPECT_EQ(code, "");
    prototype = code = "old";
    EXPECT_EQ(table.GetFunctionByIndex(0, prototype, code), Status::NotFound);
    EXPECT_EQ(prototype, "");
    EXPECT_EQ(code, "");
    EXPECT_EQ(table.UpdateFunction("Main", "", ""), Status::NotFound);
}

TEST(FuncObjectTest, DeletingFromAnEmptyTableIsAnUnexpectedError) {
    FuncObject table;
    EXPECT_EQ(table.DeleteFunction("Main"), Status::UnexpectedError);
    EXPECT_EQ(static_cast<std::int32_t>(table.DeleteFunction("Main")), 65535);
}

TEST(FuncObjectTest, GetFunctionNameOfAnEmptyTableIsDoneWithAnEmptyName) {
    std::string name = "old";
    EXPECT_EQ(FuncObject().GetFunctionName(0, name), Status::Done);
    EXPECT_EQ(name, "");
}

TEST(FuncObjectTest, GetNameOfAnEmptyTableIsTheEmptyValue) {
    std::string name = "old";
    EXPECT_EQ(FuncObject().GetName(0, name), std::nullopt);
    EXPECT_EQ(name, "");
}

TEST(FuncObjectTest, InitEmptiesTheTable) {
    FuncObject table = TableOf({"Main"});
    EXPECT_EQ(table.Init(), Status::Done);
    EXPECT_EQ(table.GetCount(), 0);
    EXPECT_EQ(table.AddFunction("main", "", ""), Status::Done);
}

TEST(FuncObjectTest, AddingAppendsAndStoresTheTextsAsTheyAre) {
    FuncObject table;
    EXPECT_EQ(table.AddFunction("Main", "void Main(void)\r\n", " {\n}\r"), Status::Done);
    std::string prototype;
    std::string code;
    EXPECT_EQ(table.GetFunctionByIndex(0, prototype, code), Status::Done);
    EXPECT_EQ(prototype, "void Main(void)\r\n");
    EXPECT_EQ(code, " {\n}\r");
}

TEST(FuncObjectTest, ANameThatAnExistingNameBeginsWithCollidesWithoutRegardToCase) {
    FuncObject table = TableOf({"Main"});
    EXPECT_EQ(table.AddFunction("main", "", ""), Status::NameCollision);
    EXPECT_EQ(table.AddFunction("Ma", "", ""), Status::NameCollision);
    EXPECT_EQ(table.AddFunction("MAIN", "", ""), Status::NameCollision);
    EXPECT_EQ(NamesOf(table), Names({"Main"}));
    EXPECT_EQ(table.AddFunction("MainLoop", "", ""), Status::Done);
    EXPECT_EQ(NamesOf(table), Names({"Main", "MainLoop"}));
}

TEST(FuncObjectTest, WithOnTickOnlyOnTickSlowCanBeAdded) {
    FuncObject table = TableOf({"OnTick"});
    EXPECT_EQ(table.AddFunction("ontick", "", ""), Status::NameCollision);
    EXPECT_EQ(table.AddFunction("On", "", ""), Status::NameCollision);
    EXPECT_EQ(table.AddFunction("OnTickSlow", "", ""), Status::Done);
}

TEST(FuncObjectTest, ANamePartInTheMiddleDoesNotCollide) {
    FuncObject table = TableOf({"OnTick"});
    EXPECT_EQ(table.AddFunction("Tick", "", ""), Status::Done);
}

TEST(FuncObjectTest, AnEmptyNameCollidesOnceThereIsAFunction) {
    FuncObject table = TableOf({"Main"});
    EXPECT_EQ(table.AddFunction("", "", ""), Status::NameCollision);
}

TEST(FuncObjectTest, AnEmptyTableAcceptsEvenAnEmptyName) {
    FuncObject table;
    EXPECT_EQ(table.AddFunction("", "", ""), Status::Done);
    EXPECT_EQ(table.GetCount(), 1);
    EXPECT_EQ(table.AddFunction("Main", "", ""), Status::Done);
    EXPECT_EQ(table.AddFunction("", "", ""), Status::NameCollision);
}

TEST(FuncObjectTest, UmlautsCollideWithoutRegardToCaseAndSharpSOnlyWithItself) {
    FuncObject table = TableOf({"Ändern", "Maß"});
    EXPECT_EQ(table.AddFunction("ändern", "", ""), Status::NameCollision);
    EXPECT_EQ(table.AddFunction("maß", "", ""), Status::NameCollision);
    EXPECT_EQ(table.AddFunction("MASS", "", ""), Status::Done);
}

TEST(FuncObjectTest, ACollisionIsFoundWhereverTheNameStandsAmongMany) {
    FuncObject table;
    for (int i = 0; i < 1000; ++i) {
        ASSERT_EQ(table.AddFunction("F" + std::to_string(i * 7919 % 1000) + "x", "", ""), Status::Done);
    }
    for (int i = 0; i < 1000; ++i) {
        EXPECT_EQ(table.AddFunction("f" + std::to_string(i) + "X", "", ""), Status::NameCollision);
    }
    EXPECT_EQ(table.AddFunction("F10", "", ""), Status::NameCollision);
    EXPECT_EQ(table.AddFunction("F1000", "", ""), Status::Done);
    EXPECT_EQ(table.GetCount(), 1001);
}

TEST(FuncObjectTest, FindCollisionNamesTheFirstInTheOrderOfTheTable) {
    const FuncObject table = TableOf({"Zero", "OnTock", "OnTick"});
    EXPECT_EQ(table.FindCollision("on"), "OnTock");
    EXPECT_EQ(table.FindCollision("ontick"), "OnTick");
    EXPECT_EQ(table.FindCollision(""), "Zero");
    EXPECT_EQ(table.FindCollision("OnTickSlow"), std::nullopt);
}

TEST(FuncObjectTest, GetNameReportsAnIndexOutOfRange) {
    const FuncObject table = TableOf({"Main"});
    std::string name = "old";
    EXPECT_EQ(table.GetName(0, name), Status::Done);
    EXPECT_EQ(name, "Main");
    EXPECT_EQ(table.GetName(1, name), Status::IndexOutOfRange);
    EXPECT_EQ(name, "");
    name = "old";
    EXPECT_EQ(table.GetName(-1, name), Status::IndexOutOfRange);
    EXPECT_EQ(name, "");
}

TEST(FuncObjectTest, GetFunctionNameDoesNotReportAnIndexOutOfRange) {
    const FuncObject table = TableOf({"Main"});
    std::string name;
    EXPECT_EQ(table.GetFunctionName(0, name), Status::Done);
    EXPECT_EQ(name, "Main");
    for (const std::int32_t index : {1, -1}) {
        name = "old";
        EXPECT_EQ(table.GetFunctionName(index, name), Status::Done);
        EXPECT_EQ(name, "");
    }
}

TEST(FuncObjectTest, GetFunctionIsCaseSensitiveAndDoneWithEmptyTextsForAnUnknownName) {
    const FuncObject table = TableOf({"Main"});
    std::string prototype = "old";
    std::string code = "old";
    EXPECT_EQ(table.GetFunction("main", prototype, code), Status::Done);
    EXPECT_EQ(prototype, "");
    EXPECT_EQ(code, "");
    EXPECT_EQ(table.GetFunction("Main", prototype, code), Status::Done);
    EXPECT_EQ(prototype, "Main prototype");
    EXPECT_EQ(code, "Main code");
}

TEST(FuncObjectTest, GetFunctionByIndexOutsideTheTableIsNotFoundWithEmptyTexts) {
    const FuncObject table = TableOf({"Main", "Other"});
    for (const std::int32_t index : {2, 3, -1}) {
        std::string prototype = "old";
        std::string code = "old";
        EXPECT_EQ(table.GetFunctionByIndex(index, prototype, code), Status::NotFound) << index;
        EXPECT_EQ(prototype, "");
        EXPECT_EQ(code, "");
    }
}

TEST(FuncObjectTest, UpdateReplacesTheTextsOfTheExactName) {
    FuncObject table = TableOf({"Main", "Other"});
    EXPECT_EQ(table.UpdateFunction("Other", "p", "c"), Status::Done);
    EXPECT_EQ(table.PrototypeAt(1), "p");
    EXPECT_EQ(table.CodeAt(1), "c");
    EXPECT_EQ(table.NameAt(1), "Other");
    EXPECT_EQ(table.CodeAt(0), "Main code");
}

TEST(FuncObjectTest, UpdateOfAnUnknownNameIsDoneAndChangesNothing) {
    FuncObject table = TableOf({"Main"});
    for (const std::string_view name : {"main", "Mai", "Unknown"}) {
        EXPECT_EQ(table.UpdateFunction(name, "p", "c"), Status::Done);
    }
    EXPECT_EQ(table.PrototypeAt(0), "Main prototype");
    EXPECT_EQ(table.CodeAt(0), "Main code");
}

TEST(FuncObjectTest, DeletingTheMiddleOfThreeClosesTheGap) {
    FuncObject table = TableOf({"One", "Two", "Three"});
    EXPECT_EQ(table.DeleteFunction("Two"), Status::Done);
    EXPECT_EQ(NamesOf(table), Names({"One", "Three"}));
    EXPECT_EQ(table.CodeAt(1), "Three code");
}

TEST(FuncObjectTest, DeletingTheOnlyFunctionLeavesAnEmptyTable) {
    FuncObject table = TableOf({"One"});
    EXPECT_EQ(table.DeleteFunction("One"), Status::Done);
    EXPECT_EQ(table.GetCount(), 0);
    EXPECT_EQ(table.DeleteFunction("One"), Status::UnexpectedError);
}

TEST(FuncObjectTest, DeletingAnUnknownNameIsNotFoundAndChangesNothing) {
    FuncObject table = TableOf({"One", "Two"});
    EXPECT_EQ(table.DeleteFunction("one"), Status::NotFound);
    EXPECT_EQ(table.DeleteFunction("Tw"), Status::NotFound);
    EXPECT_EQ(NamesOf(table), Names({"One", "Two"}));
}

TEST(FuncObjectTest, ADeletedNameIsFreeAgain) {
    FuncObject table = TableOf({"OnTick", "Other"});
    table.DeleteFunction("OnTick");
    EXPECT_EQ(table.AddFunction("On", "", ""), Status::Done);
    EXPECT_EQ(NamesOf(table), Names({"Other", "On"}));
}

TEST(FuncObjectTest, FillingRefusesTheSameNamesAsAddingOneAfterTheOther) {
    std::mt19937 random(20261120);
    for (int round = 0; round < 2000; ++round) {
        std::vector<FuncObject::Function> functions;
        for (std::size_t count = random() % 12; count > 0; --count) {
            std::string name;
            for (std::size_t length = random() % 12; length > 0; --length) {
                name += std::vector<std::string>{"a", "A", "b", "ä", "Ä", std::string(1, '\0')}[random() % 6];
            }
            functions.push_back({name, SharedText(), SharedText(name)});
        }
        FuncObject added;
        for (const FuncObject::Function& function : functions) {
            added.AddFunction(function.name, "", function.name);
        }
        FuncObject filled;
        filled.Fill(functions);
        ASSERT_EQ(NamesOf(filled), NamesOf(added)) << "round " << round;
    }
}

TEST(FuncObjectTest, AFilledTableTakesAndFindsFunctionsLikeAnyOther) {
    FuncObject table;
    table.Fill({{"OnTick", SharedText("p"), SharedText("c")}, {"on", SharedText(), SharedText()}});
    EXPECT_EQ(NamesOf(table), Names({"OnTick"}));
    EXPECT_EQ(table.AddFunction("ontick", "", ""), Status::NameCollision);
    EXPECT_EQ(table.AddFunction("Other", "", ""), Status::Done);
    EXPECT_EQ(table.UpdateFunction("OnTick", "p2", "c2"), Status::Done);
    EXPECT_EQ(table.CodeAt(0), "c2");
    EXPECT_EQ(table.DeleteFunction("OnTick"), Status::Done);
    EXPECT_EQ(NamesOf(table), Names({"Other"}));
    EXPECT_THROW(table.Fill({}), std::logic_error) << "it is not empty";
}

TEST(TextCollectorTest, WhatWasSharedStaysWhileTheTextGoesOn) {
    for (const std::size_t step : {1U, 7U, 16U, 17U, 1000U, 65535U, 65536U, 200000U}) {
        TextCollector collector;
        std::string expected;
        std::vector<std::pair<SharedText, std::string>> shared;
        for (int i = 0; i < 6; ++i) {
            const std::string piece(step, static_cast<char>('a' + i));
            collector.Tail() += piece;
            expected += piece;
            shared.emplace_back(collector.Share(), expected);
            shared.emplace_back(collector.Share(), expected);
        }
        collector.Begin();
        collector.Tail() = "new";
        shared.emplace_back(collector.Share(), "new");
        for (const auto& [text, whole] : shared) {
            ASSERT_EQ(text.View(), whole) << "in steps of " << step;
        }
    }
}

} // namespace
} // namespace tessaly
