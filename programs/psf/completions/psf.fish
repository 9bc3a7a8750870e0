# Completion of psf for fish.

# The words of the command line so far that are no options: psf, the command, its arguments.
function __psf_words
    set -l skip 0
    for word in (commandline -opc)
        if test $skip = 1
            set skip 0
        else if contains -- $word --codepage -o --output --c-file --name --files-from --format -j --jobs --timeout --junit --channel
            set skip 1
        else if not string match -q -- '-*' $word
            echo $word
        end
    end
end

# True when `command` is being given its argument number `place`.
function __psf_at -a command place
    set -l words (__psf_words)
    test (count $words) = (math $place + 1); and test "$words[2]" = $command
end

function __psf_members
    set -l words (__psf_words)
    psf show $words[3] 2>/dev/null
end

complete -c psf -f
complete -c psf -l codepage -x -a '1250 1251 1252 1253 1254 1255 1256 1257 1258' -d 'Code page of PSF and C files'
complete -c psf -s h -l help -d 'Print help'
complete -c psf -n __fish_use_subcommand -l version -d 'Print the version'
complete -c psf -n __fish_use_subcommand -a new -d 'Write a PSF file with an empty program block'
complete -c psf -n __fish_use_subcommand -a show -d 'List the members, or print one, or all as JSON'
complete -c psf -n __fish_use_subcommand -a set -d "Replace a member's text by standard input"
complete -c psf -n __fish_use_subcommand -a add -d 'Add a function'
complete -c psf -n __fish_use_subcommand -a delete -d 'Delete a function'
complete -c psf -n __fish_use_subcommand -a resave -d 'Load a file and save it as another'
complete -c psf -n __fish_use_subcommand -a generate -d 'Write the generated C file'
complete -c psf -n __fish_use_subcommand -a check -d 'Report what a load loses or changes'
complete -c psf -n __fish_use_subcommand -a build -d "Generate C code, compile it and map the messages"
complete -c psf -n __fish_use_subcommand -a test -d 'Build program blocks and run the scripts beside them'
complete -c psf -n __fish_use_subcommand -a rename -d 'Rename a function'
complete -c psf -n __fish_use_subcommand -a export -d 'Write a file for each member into a folder'
complete -c psf -n __fish_use_subcommand -a import -d 'Make a file of what export has written'
complete -c psf -n __fish_use_subcommand -a tidy -d 'Write the normal form, without empty lines at the ends of texts'
complete -c psf -n __fish_use_subcommand -a merge -d 'Merge two changed versions of a file, member by member'
complete -c psf -n __fish_use_subcommand -a text -d 'Print all texts, for reading and comparing'
complete -c psf -n __fish_use_subcommand -a git-setup -d 'Have git use tidy, merge and text'
complete -c psf -n __fish_use_subcommand -a map -d 'Copy standard input with positions mapped to members'
complete -c psf -n __fish_use_subcommand -a recover -d 'List, show or write what the window kept of unsaved texts'
complete -c psf -n '__fish_seen_subcommand_from new' -l force -d 'Replace a file that exists'
complete -c psf -n '__fish_seen_subcommand_from set add delete rename resave import generate tidy merge recover' -l force -d 'Replace a file that has other names, too'
complete -c psf -n '__fish_seen_subcommand_from show' -l json -d 'Print the whole program block as one JSON object'
complete -c psf -n '__fish_seen_subcommand_from check' -l lint -d 'Report what the texts show by themselves, too'
complete -c psf -n '__fish_seen_subcommand_from check' -l format -x -a 'text gcc json sarif github' -d 'The form of the report'
complete -c psf -n '__fish_seen_subcommand_from build test' -s j -l jobs -x -d 'How many programs may run at the same time'
complete -c psf -n '__fish_seen_subcommand_from test' -l timeout -x -d 'How many seconds a case may take'
complete -c psf -n '__fish_seen_subcommand_from test' -l junit -r -F -d 'The file for a report in XML'
complete -c psf -n '__fish_seen_subcommand_from test' -l coverage -d 'Tell which lines ran'
complete -c psf -n '__fish_seen_subcommand_from test' -l channel -x -d 'Give a channel a name: NAME=N'
complete -c psf -n '__fish_seen_subcommand_from build' -s o -l output -r -F -d 'The output name'
complete -c psf -n '__fish_seen_subcommand_from check tidy build test' -l files-from -r -F -d 'Read more paths from this file'
complete -c psf -n '__fish_seen_subcommand_from check tidy show generate merge' -l name -x -d 'How messages call the file'
complete -c psf -n '__fish_seen_subcommand_from tidy' -l check -d 'Change nothing, only tell'
complete -c psf -n '__fish_seen_subcommand_from set' -l strict -d 'Refuse characters that the code page lacks'
complete -c psf -n '__fish_seen_subcommand_from git-setup' -l global -d 'For all repositories of this user'
complete -c psf -n '__fish_seen_subcommand_from generate' -s o -l output -r -F -d 'The C file'
complete -c psf -n '__fish_seen_subcommand_from map' -l c-file -r -F -d 'The C file'
complete -c psf -n '__fish_seen_subcommand_from recover' -l json -d 'Print the list as JSON'
complete -c psf -n '__fish_seen_subcommand_from recover' -s o -l output -r -F -d 'The file to write'
complete -c psf -n '__fish_seen_subcommand_from recover' -l delete -d 'Remove it for good'
# fish takes what is after the first tab as the description.
complete -c psf -n '__psf_at recover 1' -k -a '(psf recover 2>/dev/null)'
for command in new show set add delete rename resave export generate build test check tidy text
    complete -c psf -n "__psf_at $command 1" -k -a '(__fish_complete_suffix .PSF .psf)'
end
for place in 1 2 3
    complete -c psf -n "__psf_at merge $place" -F
end
complete -c psf -n '__psf_at resave 2' -k -a '(__fish_complete_suffix .PSF .psf)'
complete -c psf -n '__psf_at show 2' -a '(__psf_members)'
complete -c psf -n '__psf_at set 2' -a '(__psf_members)'
complete -c psf -n '__psf_at export 2' -x -a '(__fish_complete_directories)'
complete -c psf -n '__psf_at import 1' -x -a '(__fish_complete_directories)'
complete -c psf -n '__psf_at import 2' -k -a '(__fish_complete_suffix .PSF .psf)'
complete -c psf -n '__psf_at rename 2' -a "(__psf_members | string replace -f functions/ '')"
complete -c psf -n '__psf_at delete 2' -a "(__psf_members | string replace -f functions/ '')"
