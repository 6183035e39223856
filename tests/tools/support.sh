# What the tests of the program share. A test includes it with its own arguments: the program, an emulator before it.
set -uo pipefail
program=("$@")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1
failures=0

pxlcc() { "${program[@]}" "$@"; }
wrong() { echo "WRONG: $*"; failures=$((failures + 1)); }

# The command succeeds and says nothing on standard error.
works() {
    pxlcc "$@" >stdout 2>stderr || wrong "exit status $? of: $*: $(cat stderr)"
    [ ! -s stderr ] || wrong "standard error of: $*: $(cat stderr)"
}

# says PATTERN ARGUMENTS: the command succeeds and says one line that matches the pattern.
says() {
    local pattern=$1
    shift
    pxlcc "$@" >stdout 2>stderr || wrong "exit status $? of: $*: $(cat stderr)"
    [ "$(wc -l <stderr)" = 1 ] && grep -q -- "$pattern" stderr || wrong "note of: $*: $(cat stderr)"
}

# fails PATTERN ARGUMENTS: exits with 1 or 2, says one line that matches the pattern, makes and changes no file.
fails() {
    local pattern=$1 before after status
    shift
    before=$(ls -lAR --time-style=full-iso)
    pxlcc "$@" >/dev/null 2>"$work.stderr"
    status=$?
    after=$(ls -lAR --time-style=full-iso)
    [ $status = 1 ] || [ $status = 2 ] || wrong "exit status $status of: $*"
    [ "$(wc -l <"$work.stderr")" = 1 ] && grep -q -- "$pattern" "$work.stderr" || wrong "message of: $*: $(cat "$work.stderr")"
    [ "$before" = "$after" ] || wrong "files changed by: $*"
    rm -f "$work.stderr"
}

same() { cmp "$1" "$2" || wrong "$1 and $2 differ"; }
bytes() { for byte in "$@"; do printf "\\x$(printf %x "$byte")"; done; }
# The samples of a file as numbers, from a byte on.
samples() { tail -c "+$(($2 + 1))" "$1" | od -An -tu1 -w1 -v | xargs; }

finish() {
    [ $failures = 0 ] && echo "all as expected"
    exit $((failures > 0))
}
