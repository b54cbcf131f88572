#include "launcher/Exec.h"

#include <vector>

#include <unistd.h>

void becomeProgram(const std::string& program, const Arguments& arguments) {
    std::vector<std::string> texts{program};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    ::execv(program.c_str(), pointers.data());
}
