#pragma once

#include <QLabel>

/// A label of one line of plain text, which ends in "..." where there is no room for all of it, so
/// that no text makes the window wider. The tool tip and assistive tools have the whole text.
class zelqElidedLabel : public QLabel {
    Q_OBJECT

public:
    explicit zelqElidedLabel(QWidget* parent = nullptr);

    /// `whole`: for the tool tip and assistive tools, where it says more than the text.
    void showText(const QString& text, const QString& whole = {});

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QSize sizeFor(int textWidth) const;
};
