// SPDX-License-Identifier: MIT
// render_icon DRAWING.svg PIXELS PICTURE.png: renders a drawing as a square picture, for desktops without SVG support.
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>
#include <cstdlib>

int main(int argc, char **argv)
{
    if (argc != 4) {
        std::fputs("usage: render_icon DRAWING.svg PIXELS PICTURE.png\n", stderr);
        return EXIT_FAILURE;
    }
    const int pixels = std::atoi(argv[2]);
    QSvgRenderer drawing(QString::fromLocal8Bit(argv[1]));
    QImage picture(pixels, pixels, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    drawing.render(&painter);
    painter.end();
    if (drawing.isValid() && picture.save(QString::fromLocal8Bit(argv[3])))
        return EXIT_SUCCESS;
    std::fprintf(stderr, "render_icon: %s cannot be rendered to %s\n", argv[1], argv[3]);
    return EXIT_FAILURE;
}
