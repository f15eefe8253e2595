import java.net.StandardProtocolFamily;
import java.net.UnixDomainSocketAddress;
import java.nio.ByteBuffer;
import java.nio.channels.SocketChannel;
import java.nio.charset.StandardCharsets;
import javax.swing.JFrame;
import javax.swing.JScrollPane;
import javax.swing.JTextArea;
import javax.swing.SwingUtilities;
import javax.swing.event.DocumentEvent;
import javax.swing.event.DocumentListener;

/** A window with a Swing text area that tells each change of its text over a local socket. */
public class SwingEditor {
  private final SocketChannel channel;
  private final JTextArea area = new JTextArea(40, 100);
  private int clearCount = 0;

  private SwingEditor(SocketChannel channel) {
    this.channel = channel;
  }

  public static void main(String[] arguments) throws Exception {
    SocketChannel channel = SocketChannel.open(StandardProtocolFamily.UNIX);
    channel.connect(UnixDomainSocketAddress.of(System.getenv("ZARVY_E2E_CHANNEL")));
    SwingEditor editor = new SwingEditor(channel);
    SwingUtilities.invokeAndWait(editor::show);
    editor.readCommands();
  }

  private void show() {
    JFrame frame = new JFrame("Editor");
    frame.add(new JScrollPane(area));
    frame.pack();
    area.getDocument().addDocumentListener(new DocumentListener() {
      @Override public void insertUpdate(DocumentEvent event) { tell(); }
      @Override public void removeUpdate(DocumentEvent event) { tell(); }
      @Override public void changedUpdate(DocumentEvent event) { tell(); }
    });
    area.addCaretListener(event -> tell());
    frame.setVisible(true);
    area.requestFocusInWindow();
    tell();
  }

  private void tell() {
    String text = area.getText();
    StringBuilder line = new StringBuilder(text.length() * 4 + 16);
    line.append(clearCount).append(' ').append(area.getCaretPosition()).append(' ');
    for (int index = 0; index < text.length(); ++index) {
      for (int shift = 12; shift >= 0; shift -= 4) {
        line.append(Character.forDigit((text.charAt(index) >> shift) & 0xF, 16));
      }
    }
    ByteBuffer bytes = ByteBuffer.wrap(line.append('\n').toString().getBytes(StandardCharsets.US_ASCII));
    try {
      while (bytes.hasRemaining()) channel.write(bytes);
    } catch (java.io.IOException gone) {
      System.exit(0);
    }
  }

  private void readCommands() throws Exception {
    ByteBuffer bytes = ByteBuffer.allocate(4096);
    while (channel.read(bytes) > 0) {
      bytes.flip();
      int count = 0;
      while (bytes.hasRemaining()) count += bytes.get() == '\n' ? 1 : 0;
      bytes.clear();
      final int commands = count;
      SwingUtilities.invokeAndWait(() -> {
        clearCount += commands;
        area.setText("");
        tell();
      });
    }
    System.exit(0);
  }
}
