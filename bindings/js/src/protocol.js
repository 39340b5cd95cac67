// What a page and its worker say to each other: calls { id, object, method, words }, and for each
// { id, value }, { id, made } or { id, error }. Objects of the library stay in the worker and are
// named by numbers; 0 is the library itself. A call that `canAbort` gets a signal in the options
// that are its last word; { abort: id } sets it off.
import { TernError } from "./TernError.js";

export const library = 0;

export function sentError(error) {
  const { code, message, description } = error;
  return { isTern: error instanceof TernError, code, message, description, text: String(error) };
}

export function receivedError({ isTern, code, message, description, text }) {
  return isTern ? new TernError(code, message, description) : new Error(text);
}
