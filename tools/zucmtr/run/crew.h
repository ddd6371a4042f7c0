// Several copies of the program that share a list of work, so that a crash costs one piece of it.
#pragma once

#include <QByteArray>

#include <cstddef>
#include <functional>
#include <set>
#include <utility>
#include <vector>

/// Pieces of work with the numbers 0 to count - 1, done by processes that take some at a time.
class Crew
{
    struct Shared;

public:
    /// What one of the processes has.
    class Member
    {
    public:
        using Pieces = std::pair<size_t, size_t>; ///< from the first to the one before the second

        /// The pieces to do next; none (equal numbers) if there are no more or the work is to end. Those
        /// taken before have to be done by then.
        Pieces Take();

        /// Marks the piece as begun; false if a process crashed in it: it is to be left out.
        bool Begin(size_t piece);

        void Done();

        bool IsToEnd() const;

        /// Has the program's `hear` called with the message.
        void Tell(const QByteArray& message);

    private:
        friend class Crew;
        Member(Crew& crew, size_t number_, Pieces first_, int mouth_);

        Shared& shared;
        const std::set<size_t>& lost;
        const size_t count;
        const size_t together;
        const size_t number;
        Pieces first; // to be done again
        const int mouth;
    };

    struct Task
    {
        size_t count = 0;                            ///< of the pieces
        size_t together = 1;                         ///< so many are taken at a time
        std::function<void(Member&)> work;           ///< in the processes
        std::function<void(const QByteArray&)> hear; ///< in the program: what members tell
        std::function<void(size_t done)> show;       ///< likewise, about ten times a second
        std::function<bool()> isToEnd;               ///< likewise
    };

    explicit Crew(Task task_);
    ~Crew();
    Crew(const Crew&) = delete;
    Crew& operator=(const Crew&) = delete;

    /// A piece in which a process crashed, with its end as waitpid gives it.
    struct Loss
    {
        size_t piece;
        int status;
    };

    /// Does the task with so many processes, which end when the program ends, however that happens. Returns
    /// what was lost. An exception in a process ends the work and is thrown here as text::Error with its
    /// message. Throws that too if no process can be started. Not for a program that runs threads.
    std::vector<Loss> Do(size_t members);

private:
    struct Child;

    void Start(size_t number, Member::Pieces first);
    [[noreturn]] void Work(size_t number, Member::Pieces first, int mouth);
    void Listen();
    void Hear(Child& child);
    void Bury(Child& child);

    const Task task;
    Shared* shared;
    std::vector<Child> children;
    std::set<size_t> lost;
    std::vector<Loss> losses;
    QByteArray failure; // message of an exception in a process
};
