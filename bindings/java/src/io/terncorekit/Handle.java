package io.terncorekit;

import java.lang.ref.PhantomReference;
import java.lang.ref.ReferenceQueue;
import java.util.Collections;
import java.util.HashSet;
import java.util.Set;
import java.util.concurrent.atomic.AtomicBoolean;
import java.util.function.LongConsumer;

/**
 * A number of the library that is closed once: by its owner, or when the owner was collected, as
 * soon as the next handle is made. That takes no thread, and neither a Cleaner, which Android has
 * had for a short time only.
 */
final class Handle extends PhantomReference<Object> {
  private static final ReferenceQueue<Object> COLLECTED = new ReferenceQueue<>();
  private static final Set<Handle> OPEN = Collections.synchronizedSet(new HashSet<>());

  final long number;
  private final LongConsumer close;
  private final AtomicBoolean isClosed = new AtomicBoolean();

  Handle(Object owner, long number, LongConsumer close) {
    super(owner, COLLECTED);
    this.number = number;
    this.close = close;
    OPEN.add(this);
    closeCollected();
  }

  static void closeCollected() {
    for (Object each = COLLECTED.poll(); each != null; each = COLLECTED.poll()) {
      ((Handle) each).close();
    }
  }

  void close() {
    if (isClosed.compareAndSet(false, true)) {
      OPEN.remove(this);
      close.accept(number);
    }
  }

  boolean isClosed() {
    return isClosed.get();
  }
}
