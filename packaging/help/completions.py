"""Shell completions, filled into the templates beside this file."""

import re


def value_kind(entry):
    """How a value is completed: file, directory, section (of the ini file given with --ini), words, nothing."""
    if entry.choices:
        return "words"
    return {"FILE": "file", "SECOND": "file", "PATH": "file", "DIR": "directory", "DIRECTORY": "directory",
            "SECTION": "section"}.get(entry.value, "nothing")


def bash_tables(commands):
    """Three tables: the words after each command, what each option's value is, what the arguments are."""
    words, values, arguments = [], [], []
    for command in commands:
        name = " ".join(command.words)
        flags = [flag for option in command.options for flag in option.flags]
        below = [other.words[-1] for other in command.commands]
        words.append(f"    [{_quoted(name)}]={_quoted(' '.join(below + flags))}")
        for option in command.options:
            for flag in option.flags if option.value else []:
                values.append(f"    [{_quoted(name + ' ' + flag)}]={_quoted(_value(option))}")
        if command.positionals:
            arguments.append(f"    [{_quoted(name)}]={_quoted(_value(command.positionals[-1]))}")
    for command in commands[1:]:
        if command.commands:  # after help, its own name is followed by one of those below it
            name = " ".join([command.words[0], "help", *command.words[1:]])
            words.append(f"    [{_quoted(name)}]=''")
            arguments.append(f"    [{_quoted(name)}]={_quoted(' '.join(['words'] + [one.words[-1] for one in command.commands]))}")
    return "\n".join(_table("words", words) + _table("values", values) + _table("arguments", arguments))


def zsh_functions(root):
    """One function for each command; those with commands below them call the others."""
    return "\n\n".join(_zsh_function(command) for command in _postorder(root))


def _postorder(command):
    for below in command.commands:
        yield from _postorder(below)
    yield command


def _table(name, rows):
    return [f"declare -gA _zucmtr_{name}=("] + rows + [")"]


def _value(entry):
    kind = value_kind(entry)
    return " ".join([kind] + entry.choices)


def _quoted(text):
    return "'" + text.replace("'", "'\\''") + "'"


def _zsh_function(command):
    specs = [_zsh_option(option) for option in command.options]
    if command.commands:
        specs += ["'1:command:->command'", "'*::argument:->argument'"]
    else:
        specs += [_zsh_positional(entry) for entry in command.positionals]
    lines = [f"{_zsh_name(command)}() {{"]
    if command.commands:
        lines += ["    local context state state_descr line curcontext=$curcontext", "    typeset -A opt_args"]
    lines += [f"    _arguments -s -S{' -C' if command.commands else ''} \\"]
    lines += [f"        {spec} \\" for spec in specs[:-1]] + [f"        {specs[-1]}"]
    if command.commands:
        lines += _zsh_dispatch(command)
    return "\n".join(lines + ["}"])


def _zsh_dispatch(command):
    lines = ["    case $state in", "    command)", "        local -a commands=("]
    lines += [f"            {_quoted(below.words[-1] + ':' + below.description)}" for below in command.commands]
    lines += ["        )", "        _describe -t commands command commands ;;", "    argument)",
              "        case $line[1] in"]
    lines += [f"        {below.words[-1]}) {_zsh_name(below)} ;;" for below in command.commands]
    return lines + ["        esac ;;", "    esac"]


def _zsh_name(command):
    return "_" + "-".join(command.words)


def _zsh_option(option):
    rest = "[" + re.sub(r"([\[\]\\])", r"\\\1", option.description) + "]"
    if option.value:
        rest += f":{option.value}:{_zsh_action(option)}"
    exclusion = f"({' '.join(_zsh_excluded(option))})" if _zsh_excluded(option) else ""
    if len(option.flags) == 1:
        return _quoted(exclusion + _zsh_flag(option.flags[0], option) + rest)
    flags = ",".join(_zsh_flag(flag, option) for flag in option.flags)
    return _quoted(exclusion) + "{" + flags + "}" + _quoted(rest)


def _zsh_flag(flag, option):
    """The value may also be in the same word: --jobs=4, -j4."""
    if not option.value:
        return flag
    return flag + ("=" if flag.startswith("--") else "+")


def _zsh_excluded(option):
    """What is no longer offered after the option: its other spellings and what it excludes; after help, everything."""
    if "--help" in option.flags or "--version" in option.flags:
        return ["- *"]
    return (option.flags if len(option.flags) > 1 else []) + option.excludes


def _zsh_positional(entry):
    return _quoted(f"{'*' if entry.repeated else ''}:{entry.value}:{_zsh_action(entry)}")


def _zsh_action(entry):
    actions = {"file": "_files", "directory": "_files -/", "section": "_zucmtr_sections",
               "words": f"({' '.join(entry.choices)})", "nothing": " "}
    return actions[value_kind(entry)]
