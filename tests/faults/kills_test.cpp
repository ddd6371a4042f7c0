// A process is killed at random moments of conversions that replace an earlier result.
#include "forms.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>

#include <csignal>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// Has a child convert over and over and kills it after some microseconds.
void ConvertAndKill(Scene& scene, unsigned int microseconds)
{
    const pid_t child = fork();
    if (child == 0) {
        for (;;)
            scene.Convert();
    }
    QElapsedTimer timer;
    timer.start();
    while (timer.nsecsElapsed() < qint64{1000} * microseconds) {
    }
    kill(child, SIGKILL);
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
}

TEST(Kills, EachFinalFileIsTheWholeOldOrTheWholeNewOne)
{
    constexpr int Kills = 500;
    std::mt19937 random(20260101);
    std::vector<std::unique_ptr<Scene>> scenes;
    for (const Form& form : AllForms()) {
        if (!form.deviceLines.contains("Удалять исходные=1"))
            scenes.push_back(std::make_unique<Scene>(form));
    }
    int old = 0;
    for (int i = 0; i < Kills; ++i) {
        Scene& scene = *scenes[static_cast<size_t>(i) % scenes.size()];
        scene.Reset();
        ConvertAndKill(scene, static_cast<unsigned int>(random() % 8000));
        const Tree output = scene.Output();
        for (auto file = scene.Whole().begin(); file != scene.Whole().end(); ++file) {
            const bool isOld = output.value(file.key()) == scene.Earlier().value(file.key());
            ASSERT_TRUE(isOld || output.value(file.key()) == file.value()) << i << ' ' << file.key();
            old += isOld ? 1 : 0;
        }
        ASSERT_TRUE(scene.Convert());
        ASSERT_TRUE(scene.Output() == scene.Whole()) << i; // nothing left over either
    }
    EXPECT_GT(old, 0); // some kills came before the commit
    std::printf("%d kills, %d final files found old\n", Kills, old);
}

} // namespace
