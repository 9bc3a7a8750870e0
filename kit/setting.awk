# Prints the value of the setting FCompFileName in a registry export file, whose bytes are the input, as
# "od -An -v -tu1" prints them; exit status 1 when the file does not name it, 3 when it takes the value away.
# Reads what the editor reads: the last one counts, and a wrong line costs only itself. Run it with LC_ALL=C.

# ---- From bytes to lines. Broken characters become the byte 377, which makes their line invalid.

function take(byte) {
    if (++count <= 2 && byte == (count == 1 ? 255 : 254) && (count == 1 || marked)) {
        marked = 1
        wide = count == 2
        return
    }
    if (count == 2 && marked)
        put(BROKEN)
    if (!wide)
        put(byte == 0 ? BROKEN : CHARACTER[byte], byte == 10)
    else if (count % 2 == 0)
        take_unit(low + 256 * byte)
    else
        low = byte
}
function take_unit(unit) {
    if (high && unit >= 56320 && unit < 57344) {
        put(utf8(65536 + (high - 55296) * 1024 + unit - 56320))
        high = 0
        return
    }
    if (high)
        put(BROKEN)
    high = unit >= 55296 && unit < 56320 ? unit : 0
    if (!high)
        put(unit == 0 || unit >= 56320 && unit < 57344 ? BROKEN : utf8(unit), unit == 10)
}
function utf8(code) {
    if (code < 128)
        return CHARACTER[code]
    if (code < 2048)
        return CHARACTER[192 + int(code / 64)] CHARACTER[128 + code % 64]
    if (code < 65536)
        return CHARACTER[224 + int(code / 4096)] CHARACTER[128 + int(code / 64) % 64] CHARACTER[128 + code % 64]
    return CHARACTER[240 + int(code / 262144)] CHARACTER[128 + int(code / 4096) % 64] \
        CHARACTER[128 + int(code / 64) % 64] CHARACTER[128 + code % 64]
}
function put(character, ends_line) {
    begun = !ends_line
    if (!ends_line)
        line = line character
    else
        end_line()
}
function end_line(   text) {
    text = line
    line = ""
    if (!lines++ && !wide)
        sub(/^\357\273\277/, "", text)
    sub(/\r$/, "", text)
    sub(/[ \t]+$/, "", text)
    text = trimmed(text)
    if (skipping)
        skip(text)
    else if (listing)
        read_bytes(rest = text)
    else if (text ~ /^\[/)
        read_key(text)
    else if (text !~ /^(;|$)/ && is_text(text))
        read_value(text)
}

# ---- Keys and values

function trimmed(text) {
    sub(/^[ \t]+/, "", text)
    return text
}
function is_end(text) {
    return text ~ /^[ \t]*(;|$)/
}
function is_text(text) {
    gsub(/[\302-\337][\200-\277]/, "", text)
    gsub(/\340[\240-\277][\200-\277]|[\341-\354\356\357][\200-\277][\200-\277]|\355[\200-\237][\200-\277]/, "", text)
    gsub(/\360[\220-\277][\200-\277][\200-\277]|[\361-\363][\200-\277][\200-\277][\200-\277]/, "", text)
    gsub(/\364[\200-\217][\200-\277][\200-\277]/, "", text)
    return text !~ /[\200-\377]/
}
function read_key(key,   deletes, root) {
    inside = 0
    if (!is_text(key) || !sub(/[]][ \t]*(;[^]]*)?$/, "", key))
        return
    key = tolower(substr(key, 2))
    deletes = sub(/^-/, "", key)
    root = key
    sub(/\\.*/, "", root)
    if (root != "hkey_local_machine" && root != "hklm")
        return
    key = substr(key, length(root) + 2)
    sub(/\\$/, "", key)
    inside = !deletes && key == KEY
    if (deletes && (key == "" || index(KEY "\\", key "\\") == 1))
        set("")
}
# Takes a text in quotes off the front of `rest`, and leaves it in `quoted`. 0 when it is wrong.
function take_quoted(   at, character) {
    quoted = ""
    for (at = 2; (character = substr(rest, at, 1)) != "\""; at++) {
        if (character == "\\") {
            character = substr(rest, ++at, 1)
            if (character != "\\" && character != "\"")
                return 0
        }
        if (character == "")
            return 0
        quoted = quoted character
    }
    rest = substr(rest, at + 1)
    return 1
}
# The same with up to `most` hexadecimal digits, as the number `hex`.
function take_hex(most,   digits) {
    hex = 0
    for (digits = 0; digits < most && rest ~ /^[0-9A-Fa-f]/; digits++) {
        hex = hex * 16 + index("0123456789abcdef", tolower(substr(rest, 1, 1))) - 1
        rest = substr(rest, 2)
    }
    return digits
}
function read_value(text) {
    rest = text
    quoted = ""
    if (text ~ /^"/ ? !take_quoted() : !sub(/^@/, "", rest))
        return
    wanted = inside && tolower(quoted) == NAME
    if (!sub(/^[ \t]*=[ \t]*/, "", rest))
        return
    if (rest ~ /^"/) {
        if (take_quoted() && is_end(rest) && wanted)
            set(quoted)
    } else if (sub(/^dword:/, "", rest)) {
        if (take_hex(8) && is_end(rest) && wanted)
            set(signed(hex))
    } else if (rest ~ /^hex/) {
        read_hex(text)
    } else if (rest ~ /^-/ && is_end(substr(rest, 2)) && wanted) {
        set("")
    }
}
function signed(number) {
    return sprintf("%.0f", number < 2147483648 ? number : number - 4294967296)
}
function set(text) {
    value = text
    named = 1
}

# ---- Lists of bytes, which may go on in further lines

function read_hex(text) {
    type = BINARY
    rest = substr(rest, 4)
    if (sub(/^[(]/, "", rest)) {
        type = take_hex(8) ? hex : -1
        if (!sub(/^[)]/, "", rest))
            type = -1
    }
    if (type < 0 || !sub(/^:/, "", rest)) {
        skip(text)
        return
    }
    size = 0
    read_bytes(text)
}
# Reads the list in `rest`, the end of the line `text`.
function read_bytes(text) {
    rest = trimmed(rest)
    listing = 0
    while (rest !~ /^\\/) {
        if (size == 0 && is_end(rest)) {
            end_bytes()
            return
        }
        if (!take_hex(2)) {
            skip(text)
            return
        }
        bytes[size++] = hex
        if (!sub(/^[ \t]*,[ \t]*/, "", rest)) {
            if (is_end(rest))
                end_bytes()
            else
                skip(text)
            return
        }
    }
    listing = is_end(substr(rest, 2))
}
# Leaves out the lines in which a wrong list goes on.
function skip(text) {
    skipping = text ~ /\\$/
}
function end_bytes(   i, number, scale) {
    if (!wanted)
        return
    if (type == STRING) {
        read_string()
    } else if (type == NUMBER && size <= 4) {
        scale = 1
        for (i = 0; i < size; i++) {
            number += bytes[i] * scale
            scale *= 256
        }
        set(signed(number))
    } else {
        set("")
    }
}
# The last character is taken for the NUL that ends a text.
function read_string(   i, unit, text, last, ended) {
    if (size % 2)
        return
    for (i = 0; i < size; i += 2) {
        unit = bytes[i] + 256 * bytes[i + 1]
        if (unit >= 55296 && unit < 56320 && i + 3 < size && bytes[i + 3] >= 220 && bytes[i + 3] < 224) {
            unit = 65536 + (unit - 55296) * 1024 + bytes[i + 2] + 256 * bytes[i + 3] - 56320
            i += 2
        } else if (unit >= 55296 && unit < 57344) {
            return
        }
        text = text last
        ended = ended || unit == 0
        last = ended ? "" : utf8(unit)
    }
    set(text)
}

BEGIN {
    KEY = "software\\ostrel\\ostrelcompiler"
    NAME = "fcompfilename"
    STRING = 1
    BINARY = 3
    NUMBER = 4
    BROKEN = "\377"
    for (i = 1; i < 256; i++)
        CHARACTER[i] = sprintf("%c", i)
}
{
    for (i = 1; i <= NF; i++)
        take($i)
}
END {
    if (high || wide && count % 2)
        put(BROKEN)
    if (begun)
        end_line()
    if (value == "")
        exit named ? 3 : 1
    print value
}
