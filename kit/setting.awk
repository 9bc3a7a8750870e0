# Prints the value of the setting FCompFileName in a registry export text; exit status 1 when the text does not name
# it, 3 when it takes the value away.
# As the editor reads it: the last one counts, and a wrong line costs only itself. Bytes, so run it with LC_ALL=C.
function enter_key(key,   deletes) {
    inside = 0
    if (!sub(/[]][ \t]*(;[^]]*)?$/, "", key))
        return
    deletes = sub(/^-/, "", key)
    if (substr(key, 1, 5) == "hklm\\")
        key = "hkey_local_machine" substr(key, 5)
    inside = !deletes && key == path
    if (deletes && index(path "\\", key "\\") == 1)
        set("")
}
function set(text) {
    value = text
    named = 1
}
function set_value(text,   at, character, result) {
    if (text ~ /^-[ \t]*(;|$)/)
        set("")
    if (substr(text, 1, 1) != "\"")
        return
    for (at = 2; (character = substr(text, at, 1)) != "\""; at++) {
        if (character == "\\") {
            character = substr(text, ++at, 1)
            if (character != "\\" && character != "\"")
                return
        }
        if (character == "")
            return
        result = result character
    }
    if (substr(text, at + 1) ~ /^[ \t]*(;|$)/)
        set(result)
}
BEGIN { path = "hkey_local_machine\\software\\ostrel\\ostrelcompiler"; name = "\"fcompfilename\"" }
NR == 1 { sub(/^\357\273\277/, "") }
{ sub(/[ \t\r]+$/, ""); sub(/^[ \t]+/, "") }
/^\[/ { enter_key(tolower(substr($0, 2))) }
inside && tolower(substr($0, 1, length(name))) == name {
    $0 = substr($0, length(name) + 1)
    if (sub(/^[ \t]*=[ \t]*/, ""))
        set_value($0)
}
END { if (value == "") exit named ? 3 : 1; print value }
