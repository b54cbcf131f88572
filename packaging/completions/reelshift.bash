# bash completion for reelshift                            -*- shell-script -*-

_reelshift()
{
    local cur prev words cword
    _init_completion || return
    if [[ $cur == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W '--help --version' -- "$cur")
    else
        _filedir '@(mp4|m4v|mov|qt|mkv|mts|m2ts|ts|hevc|h265|265)'
    fi
} &&
    complete -F _reelshift reelshift
