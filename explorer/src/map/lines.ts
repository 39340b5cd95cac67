// The lines of a name on the map.
const longestLine = 13;

// At blanks, so that the lines are about as long: a sign shall not reach far beyond its room.
export function wrapped(name: string): string {
  if (name.length <= longestLine || !name.includes(" ")) return name;
  const words = name.split(" ");
  const longer = (count: number) =>
    Math.max(words.slice(0, count).join(" ").length, words.slice(count).join(" ").length);
  let best = 1;
  for (let count = 2; count < words.length; count += 1) if (longer(count) < longer(best)) best = count;
  return [words.slice(0, best), words.slice(best)].map((half) => wrapped(half.join(" "))).join("\n");
}
