// What Qt itself says in dialogs and menus of its own, in the language of the program instead of the system's.
#pragma once

#include <QTranslator>
#include <functional>
#include <string_view>
#include <utility>

namespace tessaly::qt {

class Texts final : public QTranslator {
public:
    // `language` tells the tag of the language of the moment. All but "de" are English, as Qt has it.
    explicit Texts(std::function<std::string_view()> language) : mLanguage(std::move(language)) {}

    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* text, const char* comment, int number) const override;

private:
    std::function<std::string_view()> mLanguage;
};

} // namespace tessaly::qt
