# Makes a Debian changelog of CHANGELOG.md: awk -v maintainer=... -v date=... -v current=VERSION -f changelog.awk CHANGELOG.md
# Each section becomes a version, each point a change. All have the date of the sources: CHANGELOG.md gives none.

# Prints a change in lines of at most 78 characters.
function print_change(  count, words, line, i) {
    if (change == "") return
    count = split(change, words, / +/)
    line = "  *"
    for (i = 1; i <= count; i++) {
        if (length(line) + length(words[i]) + 1 > 78) { print line; line = "   " }
        line = line " " words[i]
    }
    print line
    change = ""
}
function finish() {
    print_change()
    if (open) printf "\n -- %s  %s\n\n", maintainer, date
}
/^## / {
    finish()
    printf "zeltrans (%s) unstable; urgency=medium\n\n", $NF
    open = 1
    if ($NF == current) found = 1
    next
}
open && /^- / { print_change(); change = substr($0, 3); next }
open && /^  / { change = change " " substr($0, 3) }
END {
    finish()
    if (!found) { print "CHANGELOG.md has no section for version " current > "/dev/stderr"; exit 1 }
}
