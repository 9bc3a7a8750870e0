// The state tables of the PSF format, one function a phase.
#include "tests/unit/document/LiteralReader.h"

#include "platform/text/CaseFold.h"

#include <algorithm>
#include <cstdint>
#include <optional>

namespace tessaly {

namespace {

const std::array<std::string, 9> Tags = {"[OnError]", "[OnFrame]",   "[OnKey]",    "[OnStart]", "[OnStop]",
                                         "[OnTimer]", "[OnTrigger]", "[OnSerial]", "[OnMsg]"};

const std::array<std::string, 9> DefaultEvents = {
    "void OnError(uchar channel, uchar error_type)\n{\n\n}",
    "void OnFrame(DataFrame *frame, uchar channel)\n{\n\n}",
    "void OnKey(char character)\n{\n\n}",
    "void OnStart(long time)\n{\n\n}",
    "void OnStop(long time)\n{\n\n}",
    "void OnTimer(uint timerid)\n{\n\n}",
    "void OnTrigger(long time)\n{\n\n}",
    "void OnSerial(const void * data, unsigned short datacount)\n{\n\n}",
    "void OnMsg(char * string){}",
};

std::vector<std::string> LinesOf(const std::string& bytes, const CodePage& codePage) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start < bytes.size()) {
        std::size_t end = start;
        while (end < bytes.size() && bytes[end] != '\r') {
            ++end;
        }
        std::string line;
        codePage.AppendDecoded(bytes.substr(start, end - start), line);
        lines.push_back(line);
        start = end + 1;
        if (start < bytes.size() && bytes[start] == '\n') {
            ++start;
        }
    }
    return lines;
}

std::string LowerAscii(std::string text) {
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c - 'A' + 'a');
        }
    }
    return text;
}

bool HasKey(const std::string& line, const std::string& key) {
    return LowerAscii(line).find(LowerAscii(key)) != std::string::npos;
}

// The text from character number `position` (from 1) to the end of the line.
std::string From(const std::string& line, int position) {
    std::size_t at = 0;
    for (int i = 1; i < position; ++i) {
        ++at;
        while (at < line.size() && (static_cast<unsigned char>(line[at]) & 0xC0U) == 0x80U) {
            ++at;
        }
    }
    return line.substr(at);
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// NumFuncs= by writing the number out: the exponent moves the point through a field of zeros.
std::optional<std::int64_t> Number(const std::string& value) {
    std::size_t at = value.find_first_not_of(" \t");
    const std::size_t end = value.find_last_not_of(" \t") + 1;
    if (at == std::string::npos) {
        return std::nullopt;
    }
    const bool minus = value[at] == '-';
    at += minus || value[at] == '+' ? 1 : 0;
    std::string whole;
    std::string fraction;
    for (; at < end && IsDigit(value[at]); ++at) {
        whole += value[at];
    }
    if (at < end && value[at] == '.') {
        for (++at; at < end && IsDigit(value[at]); ++at) {
            fraction += value[at];
        }
    }
    if (whole.empty() && fraction.empty()) {
        return std::nullopt;
    }
    std::int64_t exponent = 0;
    if (at < end && (value[at] == 'e' || value[at] == 'E')) {
        ++at;
        const bool negative = at < end && value[at] == '-';
        at += at < end && (negative || value[at] == '+') ? 1 : 0;
        if (at == end || !IsDigit(value[at])) {
            return std::nullopt;
        }
        for (; at < end && IsDigit(value[at]); ++at) {
            exponent = std::min(exponent * 10 + (value[at] - '0'), std::int64_t{20000});
        }
        exponent = negative ? -exponent : exponent;
    }
    if (at != end) {
        return std::nullopt;
    }
    for (; exponent > 0; --exponent) {
        whole += fraction.empty() ? '0' : fraction[0];
        fraction.erase(0, 1);
    }
    if (exponent < 0) {
        const auto move = static_cast<std::size_t>(-exponent);
        whole.insert(0, move, '0');
        fraction.insert(0, whole.substr(whole.size() - move));
        whole.resize(whole.size() - move);
    }
    whole.erase(0, whole.find_first_not_of('0'));
    if (whole.size() > 10) {
        return std::nullopt;
    }
    std::int64_t number = whole.empty() ? 0 : std::stoll(whole);
    const std::string half = "5" + std::string(fraction.size(), '0');
    const int order = (fraction + "0").compare(half.substr(0, fraction.size() + 1));
    number += order > 0 || (order == 0 && number % 2 == 1) ? 1 : 0;
    number = minus ? -number : number;
    return number >= INT32_MIN && number <= INT32_MAX ? std::optional<std::int64_t>(number) : std::nullopt;
}

class LiteralReading {
public:
    LiteralReading(const std::string& bytes, const CodePage& codePage) : mLines(LinesOf(bytes, codePage)) {
        mDocument.varCode = "/* ... include ... */\n\n/* ... variables ...*/\n";
        mDocument.eventCodes = DefaultEvents;
    }

    LiteralDocument Read() {
        mDocument.status = 2;
        Header();
        References();
        if (!FunctionList()) {
            return mDocument;
        }
        Functions();
        Events();
        mDocument.status = mEndSeen ? 0 : 2;
        return mDocument;
    }

private:
    bool AtEnd() const { return mNext == mLines.size(); }
    std::string Line() { return mLines[mNext++]; }

    void Header() {
        while (!AtEnd()) {
            if (Line() == "[GVars]") {
                return;
            }
        }
    }

    void References() {
        mDocument.varCode = "";
        while (!AtEnd()) {
            const std::string line = Line();
            if (line == "[GFuncs]") {
                return;
            }
            mDocument.varCode += line + "\r\n";
        }
    }

    bool FunctionList() {
        while (!AtEnd()) {
            const std::string line = Line();
            if (line == "[FuncCode]") {
                return true;
            }
            if (HasKey(line, "NumFuncs=")) {
                const std::optional<std::int64_t> number = Number(From(line, 10));
                if (!number) {
                    return false;
                }
                mCount = *number;
                if (mCount > 0) {
                    mNames.clear();
                    mFillName = "";
                }
            }
            if (HasKey(line, "FuncNames=")) {
                Names(From(line, 11));
            }
        }
        return true;
    }

    // The list of names has as many entries as announced; those behind the last comma are all the rest text,
    // so they are kept as one.
    void Names(std::string rest) {
        if (mCount <= 0) {
            return;
        }
        mNames.clear();
        for (std::int64_t k = 0; k < mCount; ++k) {
            const std::size_t comma = rest.find(',');
            if (comma == std::string::npos) {
                mFillName = rest;
                return;
            }
            mNames.push_back(rest.substr(0, comma));
            rest = rest.substr(comma + 1);
        }
        mFillName = "";
    }

    std::string Name(std::int64_t k) const {
        return k < static_cast<std::int64_t>(mNames.size()) ? mNames[static_cast<std::size_t>(k)] : mFillName;
    }

    void Functions() {
        if (mCount <= 0) {
            while (!AtEnd() && Line() != "[EventCode]") {
            }
            return;
        }
        int state = 0;
        std::string prototype;
        std::string body;
        std::string nextHeader = "[" + Name(0) + "]";
        for (std::int64_t k = 0; k < mCount && !AtEnd(); ++k) {
            if (k < mCount - 1) {
                nextHeader = "[" + Name(k + 1) + "]";
            }
            bool finished = false;
            while (!finished && !AtEnd()) {
                const std::string line = Line();
                if (state == 0) {
                    state = line == "[" + Name(k) + "]" ? 1 : 0;
                } else if (state == 1) {
                    if (HasKey(line, "ProtoType=")) {
                        prototype = From(line, 11) + "\r\n";
                        state = 2;
                    }
                } else if (state == 2) {
                    if (HasKey(line, "FuncBody=")) {
                        body = From(line, 10) + "\r\n";
                        state = 3;
                    } else {
                        prototype += line + "\r\n";
                    }
                } else if (line == nextHeader) {
                    Add(Name(k), prototype, body);
                    state = 1;
                    finished = true;
                } else if (line == "[EventCode]") {
                    Add(Name(k), prototype, body);
                    finished = true;
                } else if (line == "[EndPSF]") {
                    finished = true;
                } else {
                    body += line + "\r\n";
                }
            }
        }
    }

    void Add(const std::string& name, const std::string& prototype, const std::string& body) {
        const std::string folded = FoldCase(name);
        for (const LiteralFunction& function : mDocument.functions) {
            if (FoldCase(function.name).find(folded) == 0) {
                return;
            }
        }
        mDocument.functions.push_back({name, prototype, body});
    }

    void Events() {
        int state = 0;
        std::string text;
        std::string nextTag;
        for (std::size_t k = 0; k <= 8; ++k) {
            if (k < 8) {
                nextTag = Tags[k + 1];
            }
            bool finished = false;
            while (!finished && !AtEnd()) {
                const std::string line = Line();
                if (state == 0) {
                    state = line == Tags[k] ? 1 : 0;
                } else if (state == 1) {
                    if (HasKey(line, "FuncBody=")) {
                        text = From(line, 10) + "\r\n";
                        state = 2;
                    }
                } else if (line == nextTag) {
                    mDocument.eventCodes[k] = text;
                    text = "";
                    state = 1;
                    finished = true;
                } else if (line == "[EndPSF]") {
                    mDocument.eventCodes[k] = text;
                    mEndSeen = true;
                    finished = true;
                } else {
                    text += line + "\r\n";
                }
            }
        }
    }

    std::vector<std::string> mLines;
    std::size_t mNext = 0;
    LiteralDocument mDocument;
    std::int64_t mCount = 0;
    std::vector<std::string> mNames;
    std::string mFillName;
    bool mEndSeen = false;
};

} // namespace

LiteralDocument ReadLiterally(const std::string& bytes, const CodePage& codePage) {
    return LiteralReading(bytes, codePage).Read();
}

} // namespace tessaly
