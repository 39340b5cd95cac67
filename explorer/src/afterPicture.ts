// What can wait until the answer to a touch or a key is seen: it is done once the next picture is.
export function afterPicture(act: () => void): void {
  requestAnimationFrame(() => setTimeout(act));
}
