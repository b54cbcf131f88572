complete -c reelshift -f -s h -l help -d 'Show what the options do'
complete -c reelshift -f -s v -l version -d 'Show the version'
for ending in mp4 m4v mov qt mkv mts m2ts ts hevc h265 265
    complete -c reelshift -k -f -a "(__fish_complete_suffix .$ending)"
end
