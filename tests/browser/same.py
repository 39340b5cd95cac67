# Whether two screenshots look alike to an eye: no more than a few of their pixels are of another
# colour. Letters and edges may come out a little otherwise from one version of a
# browser to the next.
import sys

from PIL import Image, ImageChops

# The part of a screenshot that the page fills; below it the window has room to spare.
PAGE = (0, 0, 390, 620)
# Of 255, in any of red, green and blue; and how many pixels of a thousand may be further off.
NEAR = 48
FEW = 1.5

first, second = (Image.open(name).convert("RGB").crop(PAGE) for name in sys.argv[1:3])
parts = ImageChops.difference(first, second).split()
most = ImageChops.lighter(ImageChops.lighter(parts[0], parts[1]), parts[2])
off = sum(most.histogram()[NEAR + 1 :])
share = 1000 * off / (first.width * first.height)
if share > FEW:
    sys.exit(f"{share:.1f} of 1000 pixels differ")
