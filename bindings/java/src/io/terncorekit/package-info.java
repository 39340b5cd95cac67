/**
 * Indoor maps and wayfinding: routes, tours, what is nearest, how far it is.
 *
 * <p>Ids are those of the documents; waypoints are named by theirs. Map units are what a floor's
 * map is drawn in. What is answered are values that do not change. What goes wrong is a {@link
 * io.terncorekit.TernException}; an argument that is none is a {@link NullPointerException} or an
 * {@link IllegalArgumentException}, before the library is asked.
 */
package io.terncorekit;
