#compdef reelshift

_arguments -S \
    '(- *)'{-h,--help}'[show what the options do]' \
    '(- *)'{-v,--version}'[show the version]' \
    '*:movie:_files -g "(#i)*.(mp4|m4v|mov|qt|mkv|mts|m2ts|ts|hevc|h265|265)(-.)"'
