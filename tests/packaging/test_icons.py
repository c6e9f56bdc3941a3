"""The icons: their PNGs match the SVGs and are installed where the theme requires them."""

import gi
from startup.scratch import BUILD, ScratchTest

from .checks import APP_ID, PROJECT, run_tool

gi.require_version("GdkPixbuf", "2.0")
from gi.repository import GdkPixbuf  # noqa: E402

SIZES = (16, 24, 32, 48, 64, 128, 256, 512)
ICONS = (f"apps/{APP_ID}", "mimetypes/application-vnd.mavo.survey+xml")


def picture(path):
    return GdkPixbuf.Pixbuf.new_from_file(str(path))


def difference(one, other):
    """Returns the mean difference of the bytes of two pictures, 0 to 255."""
    pairs = list(zip(one.get_pixels(), other.get_pixels(), strict=True))
    return sum(abs(a - b) for a, b in pairs) / len(pairs)


class Icons(ScratchTest):
    def test_look_like_the_drawings(self):
        run_tool(PROJECT / "tools" / "draw-icons", self.scratch)
        drawn = [path.relative_to(self.scratch) for path in self.scratch.rglob("*.png")]
        self.assertEqual(2 * len(SIZES), len(drawn))
        for path in drawn:
            with self.subTest(path=path):
                # Another release of the renderer may round differently.
                kept = picture(PROJECT / path)
                self.assertLess(difference(kept, picture(self.scratch / path)), 2)

    def test_are_installed_in_all_sizes(self):
        run_tool("cmake", "--install", BUILD, "--prefix", self.scratch)
        theme = self.scratch / "share" / "icons" / "hicolor"
        for icon in ICONS:
            for size in SIZES:
                with self.subTest(icon=icon, size=size):
                    image = picture(theme / f"{size}x{size}" / f"{icon}.png")
                    self.assertEqual((size, size), (image.get_width(), image.get_height()))
            self.assertTrue((theme / "scalable" / f"{icon}.svg").exists())
        self.assertTrue((theme / "symbolic" / f"{ICONS[0]}-symbolic.svg").exists())

    def test_have_a_symbolic_form_of_one_colour(self):
        drawing = PROJECT / "packaging" / "icons" / "MAVO-logo-symbolic.svg"
        self.assertIn('viewBox="0 0 16 16"', drawing.read_text(encoding="utf-8"))
        run_tool("rsvg-convert", "--width", "64", "--output", self.scratch / "icon.png", drawing)
        pixels = picture(self.scratch / "icon.png").get_pixels()
        opaque = [pixels[n : n + 3] for n in range(0, len(pixels), 4) if pixels[n + 3] == 255]
        self.assertGreater(len(opaque), 1000)
        self.assertEqual({bytes((0x2E, 0x34, 0x36))}, set(opaque))

    def test_are_the_same_in_the_icons_of_macos(self):
        for name in ("MAVO-logo", "MAVO-document"):
            with self.subTest(icon=name):
                icon = (PROJECT / "resources" / f"{name}.icns").read_bytes()
                pictures = [*PROJECT.glob(f"resources/{name}-*.png")]
                pictures += PROJECT.glob(f"packaging/icons/{name}-*.png")
                missing = [path.name for path in pictures if path.read_bytes() not in icon]
                self.assertEqual([f"{name}-24.png", f"{name}-48.png"], sorted(missing))
