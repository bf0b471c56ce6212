#!/usr/bin/env python3
"""Writes the completions for bash, zsh and fish: make_completions.py COMMANDS.json TARGET_DIRECTORY

All three complete commands, options, the names that an option takes, files of the right kind, and message numbers: those
of the disk or library that is named before them."""
import json
import pathlib
import re
import sys


def kind(item):
    """What completes a value: names, "directory", "library", "file", "disk-number", "library-number", or "" for text."""
    value = item["value"] or item["names"][0]
    if item["choices"]:
        return " ".join(item["choices"])
    if value == "DISK" or re.search(r"\bDIR\b", value):
        return "directory"
    if value in ("LIBRARY", "SHARD") or "--library" in item["names"]:
        return "library"
    return "file" if "FILE" in value or value == "MESSAGE" else ""


def arguments(command):
    """The kinds of a command's arguments, in their order."""
    kinds = [kind(argument) for argument in command["arguments"]]
    for at, argument in enumerate(command["arguments"]):
        if argument["names"][0] in ("NUMBER", "NUMBERS") and at > 0:
            first = command["arguments"][0]["names"][0]
            kinds[at] = {"DISK": "disk-number", "LIBRARY": "library-number"}.get(first, "")
    return kinds


def leaves(program):
    """The commands that take arguments, by their words: "import", "library list"."""
    for command in program["commands"]:
        for sub in command["commands"]:
            yield f"{command['name']} {sub['name']}", sub
        yield command["name"], command


def names(items):
    return [name for item in items for name in item["names"]]


def bash(program):
    cases = []
    for words, command in leaves(program):
        values = "".join(f"            {'|'.join(option['names'])}) kind='{kind(option)}' ;;\n"
                         for option in command["options"] if option["value"])
        subs = " ".join(sub["name"] for sub in command["commands"])
        cases.append(f"""    '{words}')
        options='{' '.join(names(command['options']))}'
        commands='{subs}'
        arguments=({' '.join(f"'{each}'" for each in arguments(command))})
        case $previous in
{values}            *) value= ;;
        esac ;;
""")
    top = " ".join(command["name"] for command in program["commands"])
    with_subs = "|".join(command["name"] for command in program["commands"] if command["commands"])
    return f"""# bash completion for zeltrans. Generated from the options of its commands.
_zeltrans_numbers() {{
    local kind=$1 source=$2 program=$3 file
    if [ "$kind" = disk-number ]; then
        for file in "$source"/MESSAGES/.[0-9]*; do
            [ -e "$file" ] && echo "${{file##*/.}}"
        done
    else
        "$program" library list "$source" --json 2>/dev/null | sed -n 's/.*"number": *\\([0-9]*\\).*/\\1/p'
    fi
}}

_zeltrans() {{
    local current=${{COMP_WORDS[COMP_CWORD]}} previous=${{COMP_WORDS[COMP_CWORD-1]}}
    local command= source= kind= value=yes options= commands='{top} help' arguments=() word at count=0
    for ((at = 1; at < COMP_CWORD; ++at)); do
        word=${{COMP_WORDS[at]}}
        case $word in -*) continue ;; esac
        case $command in
            '') command=$word ;;
            {with_subs}) command="$command $word" ;;
            *)
                case ${{COMP_WORDS[at-1]}} in
                    --*) ;;  # most likely the option's value
                    *) source=${{source:-$word}}; ((++count)) ;;
                esac ;;
        esac
    done
    case $command in
    '') options='{' '.join(names(program['options']))}' value= ;;
    help) value= ;;
{''.join(cases)}    *) return ;;
    esac
    if [ -z "$value" ]; then
        case $current in
            -*) COMPREPLY=($(compgen -W "$options" -- "$current")); return ;;
        esac
        if [ -n "$commands" ]; then
            COMPREPLY=($(compgen -W "$commands" -- "$current"))
            return
        fi
        [ ${{#arguments[@]}} -gt 0 ] || return
        [ "$count" -lt ${{#arguments[@]}} ] || count=$((${{#arguments[@]}} - 1))
        kind=${{arguments[count]}}
    fi
    compopt -o filenames 2>/dev/null
    local IFS=$'\\n'
    case $kind in
        '') ;;
        directory) COMPREPLY=($(compgen -d -- "$current")) ;;
        file) COMPREPLY=($(compgen -f -- "$current")) ;;
        library) COMPREPLY=($(compgen -f -X '!*.zellib' -- "$current"; compgen -d -- "$current")) ;;
        *-number)
            compopt +o filenames 2>/dev/null
            COMPREPLY=($(compgen -W "$(_zeltrans_numbers "$kind" "$source" "${{COMP_WORDS[0]}}")" -- "$current"))
            [ "$kind" = library-number ] || COMPREPLY+=($(compgen -d -- "$current")) ;;
        *)
            compopt +o filenames 2>/dev/null
            COMPREPLY=($(IFS=' '; compgen -W "$kind" -- "$current")) ;;
    esac
}}

complete -F _zeltrans zeltrans
"""


def zsh_text(text):
    """A description in _arguments, within single quotes."""
    return re.sub(r"([\[\]:\\])", r"\\\1", text).replace("'", "'\\''")


def zsh_action(kind_of_value):
    return {"": " ", "directory": "_files -/", "file": "_files", "library": '_files -g "*.zellib"',
            "disk-number-or-disk": "{_zeltrans_disk_numbers; _files -/}", "library-number": "_zeltrans_library_numbers"}.get(
                kind_of_value, f"({kind_of_value})")


def zsh_arguments(command):
    lines = []
    for option in command["options"]:
        value = f":{zsh_text(option['value'])}:{zsh_action(kind(option))}" if option["value"] else ""
        for name in option["names"]:
            others = f"({' '.join(option['names'])})" if not option["repeated"] else "*"
            lines.append(f"'{others}{name}[{zsh_text(option['description'])}]{value}'")
    for at, (argument, action) in enumerate(zip(command["arguments"], arguments(command))):
        last = at + 1 == len(command["arguments"])
        place = "*" if last and (at > 0 or argument["repeated"]) else str(at + 1)
        if action == "disk-number":
            action = "disk-number-or-disk"
        lines.append(f"'{place}:{zsh_text(argument['names'][0])}:{zsh_action(action)}'")
    return " \\\n            ".join(lines)


def zsh_commands(commands):
    return "\n            ".join(f"'{each['name']}:{zsh_text(each['description'])}'" for each in commands)


def zsh(program):
    cases = []
    for command in program["commands"]:
        if command["commands"]:
            inner = "".join(f"            {sub['name']}) _arguments -s {zsh_arguments(sub)} ;;\n" for sub in command["commands"])
            cases.append(f"""    {command['name']})
        local -a subcommands=(
            {zsh_commands(command['commands'])})
        _arguments -C {zsh_arguments({**command, 'arguments': []})} '1: :->subcommand' '*:: :->rest' && return
        case $state in
            subcommand) _describe command subcommands ;;
            rest) case $words[1] in
{inner}            esac ;;
        esac ;;
""")
        else:
            cases.append(f"    {command['name']}) _arguments -s {zsh_arguments(command)} ;;\n")
    return f"""#compdef zeltrans
# zsh completion for zeltrans. Generated from the options of its commands.
_zeltrans_disk_numbers() {{
    local -a files=($~words[2]/MESSAGES/.[0-9]*(N:t))
    compadd -- ${{files#.}}
}}

_zeltrans_library_numbers() {{
    local library=$words[2]
    compadd -- $($service library list $library --json 2>/dev/null | sed -n 's/.*"number": *\\([0-9]*\\).*/\\1/p')
}}

_zeltrans() {{
    local curcontext=$curcontext context state state_descr line
    typeset -A opt_args
    local -a commands=(
            {zsh_commands(program['commands'])})
    _arguments -C {zsh_arguments({**program, 'arguments': []})} '1: :->command' '*:: :->rest' && return
    case $state in
        command) _describe command commands; return ;;
    esac
    case $words[1] in
{''.join(cases)}    esac
}}

_zeltrans "$@"
"""


def fish_text(text):
    return "'" + text.replace("\\", "\\\\").replace("'", "\\'") + "'"


def fish_values(kind_of_value):
    return {"": "-x", "directory": "-x -a '(__fish_complete_directories)'", "file": "-r -F",
            "library": "-x -a '(__zeltrans_libraries)'"}.get(kind_of_value, f"-x -a {fish_text(kind_of_value)}")


def fish_options(condition, command):
    lines = []
    for option in command["options"]:
        flags = "".join(f" -l {name[2:]}" if name.startswith("--") else f" -s {name[1:]}" for name in option["names"])
        value = " " + fish_values(kind(option)) if option["value"] else ""
        lines.append(f"complete -c zeltrans -n {fish_text(condition)}{flags}{value} -d {fish_text(option['description'])}")
    return lines


def fish(program):
    lines = ["# fish completion for zeltrans. Generated from the options of its commands.", """function __zeltrans_numbers
    set -l words (string match -v -- '-*' (commandline -opc))
    set -l place $argv[2]
    set -l source $words[$place]
    if test $argv[1] = disk-number
        for file in $source/MESSAGES/.*
            string replace -rf '.*/\\.(\\d+)$' '$1' -- $file
        end
    else
        $words[1] library list $source --json 2>/dev/null | string replace -rf '.*"number": *(\\d+).*' '$1'
    end
end
function __zeltrans_libraries
    set -l files (commandline -ct)*.zellib
    printf '%s\\n' $files
    __fish_complete_directories
end
complete -c zeltrans -f"""]
    lines += fish_options("__fish_use_subcommand", program)
    for command in program["commands"]:
        lines.append(f"complete -c zeltrans -n __fish_use_subcommand -a {command['name']} -d {fish_text(command['description'])}")
        seen = f"__fish_seen_subcommand_from {command['name']}"
        all_subs = " ".join(sub["name"] for sub in command["commands"])
        for sub in command["commands"]:
            lines.append(f"complete -c zeltrans -n {fish_text(f'{seen}; and not __fish_seen_subcommand_from {all_subs}')} "
                         f"-a {sub['name']} -d {fish_text(sub['description'])}")
        for words, leaf in [(f"{seen}; and __fish_seen_subcommand_from {sub['name']}", sub) for sub in command["commands"]] or [
                (seen, command)]:
            lines += fish_options(words, leaf)
            place = 4 if command["commands"] else 3
            for each in sorted(set(arguments(leaf)) - {""}):
                values = f"-a '(__zeltrans_numbers {each} {place})'" if each.endswith("-number") else (
                    "-F" if each == "file" else fish_values(each).replace("-x ", ""))
                lines.append(f"complete -c zeltrans -n {fish_text(words)} {values}")
    return "\n".join(lines) + "\n"


def main():
    commands, target = sys.argv[1:]
    program = json.loads(pathlib.Path(commands).read_text(encoding="utf-8"))
    for name, make in (("bash", bash), ("zsh", zsh), ("fish", fish)):
        (pathlib.Path(target) / f"zeltrans.{name}").write_text(make(program), encoding="utf-8")


if __name__ == "__main__":
    main()
