#pragma once

struct KtGePoint3d {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    bool operator==(const KtGePoint3d&) const = default;
};

struct KtGeScale3d {
    double sx = 1.0;
    double sy = 1.0;
    double sz = 1.0;

    bool operator==(const KtGeScale3d&) const = default;
};
