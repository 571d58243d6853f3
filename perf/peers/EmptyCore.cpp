// A QCoreApplication that does nothing: the least that an unattended run can start with. The
// measure of its start.
#include <QCoreApplication>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    return 0;
}
