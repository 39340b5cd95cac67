// Whether two pictures show the same: letters may be smoothed in another way and stand half a pixel
// beside where they stood, and nothing may come, go or change its colour.
const tile = 16;
// Of a colour's parts, of 255.
const mostApart = 64;
// Of the 256 pixels of a tile.
const mostStrange = 20;

function areAlike(a, at, b, other) {
  for (let i = 0; i < 3; i += 1) if (Math.abs(a[at + i] - b[other + i]) > mostApart) return false;
  return true;
}

// Whether the other picture has the pixel's like at its place or beside it.
function hasLike(one, other, x, y) {
  const { width, height } = one;
  const at = (y * width + x) * 3;
  if (areAlike(one.rgb, at, other.rgb, at)) return true;
  for (let v = Math.max(0, y - 1); v <= Math.min(height - 1, y + 1); v += 1) {
    for (let u = Math.max(0, x - 1); u <= Math.min(width - 1, x + 1); u += 1) {
      if (areAlike(one.rgb, at, other.rgb, (v * width + u) * 3)) return true;
    }
  }
  return false;
}

// How many pixels of either picture are strange to the other, by tiles that lie half over each other.
function strangeInTiles(one, other) {
  const across = Math.ceil((one.width * 2) / tile);
  const halves = new Uint16Array(across * Math.ceil((one.height * 2) / tile));
  for (let y = 0; y < one.height; y += 1) {
    for (let x = 0; x < one.width; x += 1) {
      if (hasLike(one, other, x, y) && hasLike(other, one, x, y)) continue;
      halves[Math.floor((y * 2) / tile) * across + Math.floor((x * 2) / tile)] += 1;
    }
  }
  return { halves, across };
}

// Where the pictures differ most, in words; null where they are alike.
export function difference(one, other) {
  if (one.width !== other.width || one.height !== other.height) {
    return `${one.width} x ${one.height} pixels and ${other.width} x ${other.height}`;
  }
  const { halves, across } = strangeInTiles(one, other);
  let [most, where] = [0, 0];
  halves.forEach((_, at) => {
    const right = (at + 1) % across === 0 ? 0 : 1;
    const sum = [at, at + right, at + across, at + across + right]
      .filter((each, index, all) => all.indexOf(each) === index)
      .reduce((all, each) => all + (halves[each] ?? 0), 0);
    if (sum > most) [most, where] = [sum, at];
  });
  if (most <= mostStrange) return null;
  const [x, y] = [(where % across) * (tile / 2), Math.floor(where / across) * (tile / 2)];
  return `${most} of ${tile * tile} pixels differ at ${x}, ${y}`;
}
