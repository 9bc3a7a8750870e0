// What Qt itself says in dialogs and menus of its own, in the language of the program instead of the system's.
#pragma once

#include <QTranslator>
#include <functional>
#include <utility>

namespace tessaly::qt {

class Texts final : public QTranslator {
public:
    // `isGerman` tells the language of the moment; without German it is English, as Qt has it.
    explicit Texts(std::function<bool()> isGerman) : mIsGerman(std::move(isGerman)) {}

    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* text, const char* comment, int number) const override;

private:
    std::function<bool()> mIsGerman;
};

} // namespace tessaly::qt
