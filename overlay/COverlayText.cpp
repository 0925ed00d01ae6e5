/* SPDX-License-Identifier: MIT */
#include "overlay/COverlayText.h"

COverlayText::COverlayText() : m_eForegroundColor{1}, m_eBackgroundColor{5}, m_u8X(0), m_u8Y(0) {}

QString COverlayText::getText() const
{
    return m_cText;
}

void COverlayText::setText(const QString& rcText)
{
    m_cText = rcText;
}

unsigned int COverlayText::getTextStrLength() const
{
    return static_cast<unsigned int>(m_cText.size());
}

EOverlayTextColor COverlayText::getForegroundColor() const
{
    return m_eForegroundColor;
}

void COverlayText::setForegroundColor(EOverlayTextColor eColor)
{
    m_eForegroundColor = eColor;
}

EOverlayTextColor COverlayText::getBackgroundColor() const
{
    return m_eBackgroundColor;
}

void COverlayText::setBackgroundColor(EOverlayTextColor eColor)
{
    m_eBackgroundColor = eColor;
}

unsigned char COverlayText::getX() const
{
    return m_u8X;
}

void COverlayText::setX(unsigned char u8X)
{
    m_u8X = u8X;
}

unsigned char COverlayText::getY() const
{
    return m_u8Y;
}

void COverlayText::setY(unsigned char u8Y)
{
    m_u8Y = u8Y;
}
