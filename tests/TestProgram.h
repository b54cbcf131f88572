#pragma once

#include <QTest>

/// The classes of one test program: its first argument names the one that is to run, the others are
/// Qt Test's own.
class TestProgram final {
public:
    TestProgram() = delete;

    using Main = int (*)(int argc, char** argv);

    /// A class of tests under the name it has for ctest. To be made before main() begins.
    class Entry final {
    public:
        Entry(const char* name, Main main) noexcept;
        Q_DISABLE_COPY_MOVE(Entry)

    private:
        friend class TestProgram;
        const char* name_;
        Main main_;
        const Entry* next_;
    };

    static int run(int argc, char** argv);

    template <typename Test, typename Application> static int runClass(int argc, char** argv) {
        const Application application(argc, argv);
        // As Qt Test's own programs do.
        QCoreApplication::setAttribute(Qt::AA_Use96Dpi, true);
        Test test;
        return QTest::qExec(&test, argc, argv);
    }

private:
    static const Entry* first;
};

/// In place of the application, for tests that need none.
class NoApplication final {
public:
    NoApplication(int&, char**) {}
};

/// Stands where QTEST_MAIN would: the class `Test` is run by `ctest -R name` with an object of
/// `Application` around it, which may be a QCoreApplication, more of one, or NoApplication.
#define REELSHIFT_TEST(name, Test, Application)                                                    \
    static const TestProgram::Entry name##Entry(#name, &TestProgram::runClass<Test, Application>);
