// What went wrong, with the library's own codes.
export class TernError extends Error {
  constructor(code, message, description = message, options = undefined) {
    super(message, options);
    this.name = "TernError";
    this.code = code;
    this.description = description;
  }

  // Of {"code","message","description"}.
  static of({ code, message, description }) {
    return new TernError(code, message, description);
  }
}

export const notReached = "TN001";
export const refused = "TN002";
export const wrongArgument = "TN006";
export const everythingElse = "TN008";
